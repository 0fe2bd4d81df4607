#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>

#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace fiar {
namespace {

TEST(SystemClock, TellsTheSameTimeInSecondsAndAsADate) {
  const Clock& clock = systemClock();
  const double before = clock.timer();
  const DateTime now = clock.now();
  const double after = clock.timer();
  const double seconds = (now.hour * 60 + now.minute) * 60 + now.second;
  if (before <= after) {  // not over midnight
    EXPECT_GE(seconds, std::floor(before));
    EXPECT_LE(seconds, after);
  }
  EXPECT_GE(before, 0);
  EXPECT_LT(before, 86400);
  EXPECT_GE(now.year, 2024);
}

TEST(SystemClock, MovesInStepsFinerThanATickOfTheGame) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  const double start = systemClock().timer();
  double next = start;
  while (next == start && std::chrono::steady_clock::now() < deadline) next = systemClock().timer();
  EXPECT_NE(next, start);
  EXPECT_LT(std::fmod(next - start + 86400, 86400), 5);
}

TEST(SystemEnvironment, KnowsTheProgramsFolder) {
  const Text folder = systemEnvironment().programFolder();
  EXPECT_TRUE(std::filesystem::exists(nativePath(folder + u"\\unit_tests")) ||
              std::filesystem::exists(nativePath(folder + u"\\unit_tests.exe")))
      << toUtf8(folder);
}

TEST(SystemEnvironment, ReadsVariables) {
  EXPECT_NE(systemEnvironment().variable(u"PATH"), u"");
  EXPECT_EQ(systemEnvironment().variable(u"FIVE_IN_A_ROW_ABSENT"), u"");
  EXPECT_EQ(systemEnvironment().variable(u""), u"");
}

}  // namespace
}  // namespace fiar
