// What Windows gives: code page, errors, environment, resources, sound, messages.

#include "win32/services/services.h"

#include <gtest/gtest.h>

#include <chrono>
#include <numeric>

#include "support/files.h"
#include "win32/error.h"
#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

using Time = std::chrono::steady_clock;
using namespace std::chrono_literals;

TEST(AnsiCodePage, KeepsEveryByteAndTakesTheNearestCharacter) {
  std::string bytes(256, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  // A letter with a caron, a wide and a narrow letter of East Asia, half of a character.
  const TextView text = u"\u010D\uFF21\uFF71\xD83D";
  const std::pair<unsigned, std::string_view> cases[] = {
      {1250, "\xE8\x41??"}, {1252, "cA??"}, {932, "??\xB1?"}, {CP_UTF8, "cA??"}};
  for (const auto& [number, nearest] : cases) {
    const CodePage page = ansiCodePage(number);
    EXPECT_EQ(page.encode(page.decode(bytes)), bytes) << number;
    EXPECT_EQ(page.encode(text), nearest) << number;
  }
}

TEST(Win32Error, NamesTheCallAndTheSystemsReason) {
  const Text message = Error("Open", ERROR_FILE_NOT_FOUND).message();
  EXPECT_EQ(message, u"Open: " + errorText(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(message.find_first_of(u"\r\n"), Text::npos);
  EXPECT_EQ(errorText(0x2FFFFFFF), u"error 805306367");
}

TEST(Win32Clock, TellsTheSameTimeInSecondsAndAsADate) {
  const double before = Win32Clock().timer();
  const DateTime now = Win32Clock().now();
  const double after = Win32Clock().timer();
  const int seconds = (now.hour * 60 + now.minute) * 60 + now.second;
  EXPECT_TRUE(after < before || (seconds + 1 > before && seconds <= after)) << seconds;
}

TEST(Win32RegionalFormat, ReadsItsOwnNumbersAndShowsEveryPartOfADate) {
  const Win32RegionalFormat format;
  EXPECT_EQ(format.number(format.numberText(-2.5)), -2.5);
  const Text text = format.dateTimeText({2031, 12, 28, 10, 47, 59});
  for (const TextView part : {u"31", u"12", u"28", u"10", u"47", u"59"}) {
    EXPECT_NE(text.find(part), Text::npos) << testing::PrintToString(text);
  }
}

TEST(Win32Environment, SeesAnotherInstanceWhileItRunsAndVariablesOfAnyLength) {
  // A name of this run's own: other runs of the tests may be under way.
  const Text name = u"FiveInARow.test." + fromWide(std::to_wstring(GetCurrentProcessId()));
  {
    const Win32Environment first(name);
    EXPECT_TRUE(Win32Environment(name).otherInstanceRunning());
    EXPECT_FALSE(first.otherInstanceRunning());
  }
  const Win32Environment last(name);
  EXPECT_FALSE(last.otherInstanceRunning());
  const std::wstring value(30000, L'\u010D');
  SetEnvironmentVariableW(L"FIVE_\u017D", value.c_str());
  EXPECT_EQ(last.variable(u"five_\u017E"), fromWide(value));
  EXPECT_EQ(last.variable(u"five_"), u"");
  EXPECT_NE(GetFileAttributesW(toWide(last.programFolder() + u"unit_tests.exe").c_str()),
            INVALID_FILE_ATTRIBUTES);
}

TEST(Win32Resources, AreReadWholeFromTheProgramWhereItHasThem) {
  const Win32Resources resources;
  EXPECT_EQ(resources.custom(7), std::string("seven\0bytes", 11));
  for (const TextView name : {u"Named", u"named"}) EXPECT_EQ(resources.custom(name), "by name");
  for (const unsigned number : {0U, 8U, 0xFFFFU, 0x10007U}) EXPECT_FALSE(resources.custom(number)) << number;
  for (const TextView name : {u"", u"Name", u"Named "}) EXPECT_FALSE(resources.custom(name));
}

// With or without a sound device: each cue is cut off by the next, so twenty of a quarter of a second, which
// the system's slow first one does not count among, take far less than five seconds.
TEST(Win32Sound, ReturnsAtOnceAndNeedsNeitherADeviceNorTheImage) {
  const test::FileResources shipped;
  const std::string error = shipped.custom(u"WAVERR").value();
  const std::string tap = shipped.custom(u"WAVTAP").value();
  Win32SoundPlayer player;
  player.play(tap);
  const auto start = Time::now();
  for (int i = 0; i < 20; ++i) {
    player.stop();
    for (const std::string& image : {error, tap, std::string("RIFF")}) player.play(std::string(image));
  }
  EXPECT_LT(Time::now() - start, 4500ms);
}

// A timer that is due again whenever its handler is done must not keep the program here forever.
TEST(Win32Events, DeliveryEndsThoughMessagesKeepComing) {
  static int ticks = 0;
  const UINT_PTR timer = SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR id, DWORD) {
    Sleep(20);
    if (++ticks == 50) KillTimer(nullptr, id);
  });
  Win32Events().waitAndProcess(5);
  KillTimer(nullptr, timer);
  EXPECT_GE(ticks, 1);
  EXPECT_LT(ticks, 50);
}

}  // namespace
}  // namespace fiar::win32
