#pragma once

#include <windows.h>

#include <optional>
#include <vector>

namespace fiar::win32 {

/// Deals with the keys that work alike in the whole window: Tab and Shift+Tab move the focus, Enter clicks
/// the button that has it. Returns whether the message has been dealt with. \param tabOrder the windows that
/// can have the focus now, in their order.
bool handleDialogKey(const MSG& message, const std::vector<HWND>& tabOrder);

/// Whether a message tells of the keyboard's use (true) or the mouse's (false) in a way that decides whether
/// the focus has to be seen; nothing for other messages.
std::optional<bool> focusHasToShow(const MSG& message);

/// The modifier keys that are down, as events report them.
int pressedModifiers();

}  // namespace fiar::win32
