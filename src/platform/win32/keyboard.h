#pragma once

#include <windows.h>

#include <vector>

namespace fiar::win32 {

/// Deals with the keys that work alike in the whole window: Tab and Shift+Tab move the focus, Enter clicks
/// the button that has it. Returns whether the message has been dealt with. \param tabOrder the windows that
/// can have the focus now, in their order.
bool handleDialogKey(const MSG& message, const std::vector<HWND>& tabOrder);

/// Whether the controls in a window show which of them has the focus. They do once the keyboard is used, and
/// no longer when the mouse is.
bool focusShows(HWND window);
/// Makes all controls of a window of its own show the focus or not.
void setFocusShows(HWND topWindow, bool shows);

/// The modifier keys that are down, as events report them.
int pressedModifiers();

}  // namespace fiar::win32
