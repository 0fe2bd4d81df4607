#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>

#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/files.h"

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

}  // namespace
}  // namespace fiar
