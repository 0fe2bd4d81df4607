#include "platform/win32/win32_environment.h"

#include <gtest/gtest.h>

#include "platform/win32/wide_text.h"

namespace fiar::win32 {
namespace {

TEST(Win32Environment, SeesAnotherInstanceWhileItRuns) {
  // A name of this run's own: other runs of the tests may be under way.
  const Text name = u"FiveInARow.test." + fromWide(std::to_wstring(GetCurrentProcessId()));
  {
    const Win32Environment first(name);
    EXPECT_FALSE(first.otherInstanceRunning());
    const Win32Environment second(name);
    EXPECT_TRUE(second.otherInstanceRunning());
    EXPECT_FALSE(first.otherInstanceRunning());
    EXPECT_FALSE(Win32Environment(name + u".other").otherInstanceRunning());
  }
  EXPECT_FALSE(Win32Environment(name).otherInstanceRunning());
}

TEST(Win32Environment, ReadsVariablesOfAnyLength) {
  const Win32Environment environment(u"FiveInARow.test.variables");
  const std::wstring name = L"FIVE_\u017D";
  for (const std::wstring& value :
       {std::wstring(L"\u010D\u4E2D"), std::wstring(30000, L'x'), std::wstring()}) {
    SetEnvironmentVariableW(name.c_str(), value.c_str());
    EXPECT_EQ(environment.variable(u"five_\u017E"), fromWide(value));
  }
  SetEnvironmentVariableW(name.c_str(), nullptr);
  EXPECT_EQ(environment.variable(u"five_\u017E"), u"");
  EXPECT_TRUE(environment.programFolder().ends_with(u"\\"));
}

}  // namespace
}  // namespace fiar::win32
