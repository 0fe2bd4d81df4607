#pragma once

#include <windows.h>

#include "platform/text.h"

namespace fiar::win32 {

/// Tells screen readers what to call a window's control. Where the system knows no such names, nothing
/// happens.
void setAccessibleName(HWND window, TextView name) noexcept;

}  // namespace fiar::win32
