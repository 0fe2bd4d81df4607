// What the machine gives: its time, its environment, numbers at random.

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>

#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/random_generator.h"

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
  if (after > before) {  // not over midnight
    EXPECT_GE(seconds, std::floor(before));
    EXPECT_LE(seconds, after);
  }
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
  MersenneTwister first;
  MersenneTwister same;
  MersenneTwister other;
  first.seed(43200.25);
  same.seed(43200.25);
  other.seed(43200.26);
  int differing = 0;
  double sum = 0;
  for (int i = 0; i < 10000; ++i) {
    const double value = first.next();
    ASSERT_TRUE(value >= 0.0 && value < 1.0 && value == same.next()) << value;
    differing += value != other.next() ? 1 : 0;
    sum += value;
  }
  EXPECT_GT(differing, 9900);
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

}  // namespace
}  // namespace fiar
