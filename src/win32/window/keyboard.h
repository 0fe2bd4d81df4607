#pragma once

#include <windows.h>

namespace fiar::win32 {

/// Does what keys and the mouse do in every window of a form, before the window itself has the message: Tab
/// and Shift+Tab move the focus, Enter clicks the button that has it; the focus is shown once such a key, an
/// arrow or Space is used, and hidden once the mouse is. Returns whether that was all.
bool handleFormInput(HWND window, UINT message, WPARAM wParam);

/// Whether a window of a form has the focus and shows it.
bool focusShows(HWND window);

/// Whether a key or mouse button, as VK_... names it, was down when the message was sent.
bool isDown(int key);

/// The modifier keys that are down, as events report them.
int pressedModifiers();

}  // namespace fiar::win32
