#pragma once

#include <string>
#include <string_view>

#include "platform/text.h"

namespace fiar::win32 {

// The system's wide characters are UTF-16 code units too, in a type of their own.
static_assert(sizeof(wchar_t) == sizeof(char16_t));

/// The text as the system takes it.
inline std::wstring toWide(TextView text) {
  return {text.begin(), text.end()};
}

/// The text that the system gave.
inline Text fromWide(std::wstring_view wide) {
  return {wide.begin(), wide.end()};
}

}  // namespace fiar::win32
