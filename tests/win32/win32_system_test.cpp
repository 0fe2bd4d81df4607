// What Windows gives: code page, errors, environment, resources, sound, messages.

#include "win32/services/services.h"

#include <gtest/gtest.h>

#include "support/files.h"
#include "win32/error.h"
#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

TEST(AnsiCodePage, KeepsEveryByteAndTakesTheNearestCharacter) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  const std::pair<unsigned, std::string_view> cases[] = {{932, "??\xB1?"}, {CP_UTF8, "cA??"}};
  for (const auto& [number, nearest] : cases) {
    const CodePage page = ansiCodePage(number);
    EXPECT_EQ(page.encode(page.decode(bytes)), bytes) << number;
    // A letter with a caron, a wide and a narrow letter of East Asia, half of a character.
    EXPECT_EQ(page.encode(u"\u010D\uFF21\uFF71\xD83D"), nearest) << number;
  }
}

TEST(Win32Error, NamesTheCallAndTheSystemsReasonOrItsNumber) {
  EXPECT_EQ(errorText(ERROR_FILE_NOT_FOUND).find_first_of(u"\r\n0123456789"), Text::npos);
  EXPECT_EQ(Error("Open", 0x2FFFFFFF).message(), u"Open: error 805306367");
}

TEST(Win32Clock, TellsTheSameTimeInSecondsAndAsADate) {
  const DateTime now = Win32Clock().now();
  const int seconds = (now.hour * 60 + now.minute) * 60 + now.second;
  // The time in seconds begins anew at midnight.
  EXPECT_LT((static_cast<int>(Win32Clock().timer()) - seconds + 86400) % 86400, 5) << seconds;
}

TEST(Win32RegionalFormat, ReadsItsOwnNumbersAndShowsEveryPartOfADate) {
  EXPECT_EQ(Win32RegionalFormat().number(Win32RegionalFormat().numberText(-2.5)), -2.5);
  const Text text = Win32RegionalFormat().dateTimeText({2031, 12, 28, 10, 47, 59});
  for (const TextView part : {u"31", u"12", u"28", u"10", u"47", u"59"}) {
    EXPECT_NE(text.find(part), Text::npos) << testing::PrintToString(text);
  }
}

TEST(Win32Environment, SeesAnotherInstanceWhileItRunsAndVariablesOfAnyLength) {
  // A name of this run's own: other runs of the tests may be under way.
  const Text name = u"FiveInARow.test." + fromWide(std::to_wstring(GetCurrentProcessId()));
  std::optional<Win32Environment> environment(name);
  EXPECT_TRUE(Win32Environment(name).otherInstanceRunning());
  environment.emplace(name);
  EXPECT_FALSE(environment->otherInstanceRunning());
  const std::wstring value(30000, L'\u010D');
  SetEnvironmentVariableW(L"FIVE_\u017D", value.c_str());
  EXPECT_EQ(environment->variable(u"five_\u017E"), fromWide(value));
  EXPECT_TRUE(std::filesystem::exists(environment->programFolder() + u"unit_tests.exe"));
}

TEST(Win32Resources, AreReadWholeFromTheProgramWhereItHasThem) {
  const Win32Resources resources;
  EXPECT_EQ(resources.custom(7), std::string("seven\0bytes", 11));
  EXPECT_EQ(resources.custom(u"named"), "by name");
  for (const unsigned number : {0U, 8U, 0xFFFFU, 0x10007U}) EXPECT_FALSE(resources.custom(number)) << number;
  for (const TextView name : {u"", u"Name", u"Named "}) EXPECT_FALSE(resources.custom(name));
}

// With or without a sound device: each cue of a quarter of a second is cut off by the next one.
TEST(Win32Sound, PlaysInTheBackgroundUntilItIsStopped) {
  const std::string cue = test::resourceFile("error.wav");
  Win32SoundPlayer player;
  const ULONGLONG start = GetTickCount64();
  for (int i = 0; i < 80; ++i) player.play(cue);
  player.stop();
  EXPECT_LT(GetTickCount64() - start, 15000U);
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
