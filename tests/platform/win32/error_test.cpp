#include "platform/win32/error.h"

#include <gtest/gtest.h>

namespace fiar::win32 {
namespace {

TEST(Win32Error, NamesTheCallAndTheSystemsReason) {
  EXPECT_EQ(require(5, "unused"), 5);
  try {
    SetLastError(ERROR_FILE_NOT_FOUND);
    require(HANDLE{}, "OpenSomething");
    FAIL() << "no error was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.code().value(), ERROR_FILE_NOT_FOUND);
    const std::string reason = errorText(ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(error.what(), "OpenSomething: " + reason);
    EXPECT_EQ(reason.find_first_of("\r\n"), std::string::npos);
    EXPECT_NE(reason, errorText(ERROR_ACCESS_DENIED));
  }
  EXPECT_EQ(errorText(0x2FFFFFFF), "error 805306367");
}

}  // namespace
}  // namespace fiar::win32
