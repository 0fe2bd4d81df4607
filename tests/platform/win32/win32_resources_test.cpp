#include "platform/win32/win32_resources.h"

#include <gtest/gtest.h>

namespace fiar::win32 {
namespace {

TEST(Win32Resources, AreReadWholeFromTheProgram) {
  const Win32Resources resources;
  EXPECT_EQ(resources.custom(7), std::string("seven\0bytes", 11));
  for (const TextView name : {u"Named", u"NAMED", u"named"}) {
    EXPECT_EQ(resources.custom(name), "by name") << toUtf8(name);
  }
}

TEST(Win32Resources, AreAbsentWhereTheProgramHasNone) {
  const Win32Resources resources;
  for (const unsigned number : {0U, 8U, 0xFFFFU, 0x10007U}) {
    EXPECT_FALSE(resources.custom(number).has_value()) << number;
  }
  for (const TextView name : {u"", u"Name", u"Named "}) {
    EXPECT_FALSE(resources.custom(name).has_value()) << toUtf8(name);
  }
}

}  // namespace
}  // namespace fiar::win32
