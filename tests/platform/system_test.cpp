// What the machine gives: its time, its environment, numbers at random.

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>

#include "platform/files.h"
#include "platform/mersenne_twister.h"

namespace fiar {
namespace {

TEST(SystemClock, MovesAndTellsTheSameTimeInSecondsAndAsADate) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  const double before = systemClock().timer();
  const DateTime now = systemClock().now();
  double after = before;
  while (after == before && std::chrono::steady_clock::now() < deadline) after = systemClock().timer();
  const double seconds = (now.hour * 60 + now.minute) * 60 + now.second;
  EXPECT_NE(after, before);
  const bool overMidnight = after < before;
  EXPECT_TRUE(overMidnight || (seconds >= std::floor(before) && seconds <= after)) << seconds;
  EXPECT_LT(after, 86400);
  EXPECT_GE(now.year, 2024);
}

TEST(SystemEnvironment, KnowsTheProgramsFolderAndVariables) {
  const Environment& environment = systemEnvironment();
  const Text program = environment.programFolder() + u"\\unit_tests";
  EXPECT_TRUE(std::filesystem::exists(nativePath(program)) ||
              std::filesystem::exists(nativePath(program + u".exe")))
      << toUtf8(program);
  EXPECT_NE(environment.variable(u"PATH"), u"");
  EXPECT_EQ(environment.variable(u"FIVE_IN_A_ROW_ABSENT"), u"");
  EXPECT_EQ(environment.variable(u""), u"");
}

TEST(MersenneTwister, StaysBelowOneAndRepeatsForTheSameSeedOnly) {
  std::array<MersenneTwister, 3> generators;
  const std::array seeds{43200.25, 43200.25, 43200.26};
  for (std::size_t i = 0; i < 3; ++i) generators[i].seed(seeds[i]);
  int differing = 0;
  double sum = 0;
  for (int i = 0; i < 10000; ++i) {
    const double value = generators[0].next();
    ASSERT_TRUE(value >= 0.0 && value < 1.0 && value == generators[1].next()) << value;
    differing += value != generators[2].next() ? 1 : 0;
    sum += value;
  }
  EXPECT_GT(differing, 9900);
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

}  // namespace
}  // namespace fiar
