// What Windows gives: code page, errors, environment, resources, sound.

#include <gtest/gtest.h>

#include <chrono>

#include "platform/code_page.h"
#include "platform/file_resources.h"
#include "platform/win32/error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_environment.h"
#include "platform/win32/win32_resources.h"
#include "platform/win32/win32_sound.h"

namespace fiar::win32 {
namespace {

TEST(Win32CodePage, IsTheSystemsOwnByteForByte) {
  CPINFO info{};
  ASSERT_NE(GetCPInfo(CP_ACP, &info), FALSE);
  if (info.MaxCharSize != 1) GTEST_SKIP() << "characters of more than one byte here";
  for (int code = 0; code < 256; ++code) {
    const char byte = static_cast<char>(code);
    wchar_t wide = 0;
    ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, &byte, 1, &wide, 1), 1) << code;
    EXPECT_EQ(CodePage::system().character(static_cast<std::uint8_t>(code)), static_cast<char16_t>(wide))
        << code;
  }
}

TEST(Win32Error, NamesTheCallAndTheSystemsReason) {
  EXPECT_EQ(require(5, "unused"), 5);
  try {
    SetLastError(ERROR_FILE_NOT_FOUND);
    require(HANDLE{}, "OpenSomething");
    FAIL() << "no error was thrown";
  } catch (const Error& error) {
    const std::string reason = errorText(ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(error.what(), "OpenSomething: " + reason);
    EXPECT_EQ(reason.find_first_of("\r\n"), std::string::npos);
    EXPECT_NE(reason, errorText(ERROR_ACCESS_DENIED));
  }
  EXPECT_EQ(errorText(0x2FFFFFFF), "error 805306367");
}

TEST(Win32Environment, SeesAnotherInstanceWhileItRuns) {
  // A name of this run's own: other runs of the tests may be under way.
  const Text name = u"FiveInARow.test." + fromWide(std::to_wstring(GetCurrentProcessId()));
  {
    const Win32Environment first(name);
    EXPECT_TRUE(Win32Environment(name).otherInstanceRunning());
    EXPECT_FALSE(first.otherInstanceRunning());
    EXPECT_FALSE(Win32Environment(name + u".other").otherInstanceRunning());
  }
  EXPECT_FALSE(Win32Environment(name).otherInstanceRunning());
}

TEST(Win32Environment, ReadsVariablesOfAnyLength) {
  for (const std::wstring& value :
       {std::wstring(L"\u010D\u4E2D"), std::wstring(30000, L'x'), std::wstring()}) {
    SetEnvironmentVariableW(L"FIVE_\u017D", value.c_str());
    EXPECT_EQ(systemEnvironment().variable(u"five_\u017E"), fromWide(value));
  }
  EXPECT_TRUE(systemEnvironment().programFolder().ends_with(u"\\"));
}

TEST(Win32Resources, AreReadWholeFromTheProgramWhereItHasThem) {
  const Win32Resources resources;
  EXPECT_EQ(resources.custom(7), std::string("seven\0bytes", 11));
  for (const TextView name : {u"Named", u"named"}) EXPECT_EQ(resources.custom(name), "by name");
  for (const unsigned number : {0U, 8U, 0xFFFFU, 0x10007U}) {
    EXPECT_FALSE(resources.custom(number).has_value()) << number;
  }
  for (const TextView name : {u"", u"Name", u"Named "}) EXPECT_FALSE(resources.custom(name).has_value());
}

// With or without a sound device: each cue is cut off by the next, so twenty of a quarter of a second, which
// the system's slow first one does not count among, take far less than five seconds.
TEST(Win32Sound, ReturnsAtOnceAndNeedsNeitherADeviceNorTheImage) {
  const FileResources resources(FIAR_RESOURCE_DIR);
  const std::string error = resources.custom(u"WAVERR").value();
  const std::string tap = resources.custom(u"WAVTAP").value();
  Win32SoundPlayer().play(tap);
  const auto start = std::chrono::steady_clock::now();
  {
    Win32SoundPlayer player;
    player.stop();
    for (int i = 0; i < 20; ++i) {
      for (const std::string& image :
           {error, tap, std::string("RIFF"), error.substr(0, 100), std::string()}) {
        player.play(std::string(image));
      }
    }
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4500));
}

}  // namespace
}  // namespace fiar::win32
