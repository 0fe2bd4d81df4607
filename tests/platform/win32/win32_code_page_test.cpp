#include <gtest/gtest.h>
#include <windows.h>

#include "platform/code_page.h"

namespace fiar {
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

}  // namespace
}  // namespace fiar
