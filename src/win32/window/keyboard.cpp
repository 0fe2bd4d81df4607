#include "win32/window/keyboard.h"

#include <algorithm>
#include <array>

#include "forms/controls.h"

namespace fiar::win32 {
namespace {

bool isPushButton(HWND window) {
  return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

bool isPress(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

bool isControlKey(WPARAM key) {
  constexpr std::array<WPARAM, 7> kKeys{VK_TAB, VK_RETURN, VK_SPACE, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN};
  return std::find(kKeys.begin(), kKeys.end(), key) != kKeys.end();
}

}  // namespace

bool handleFormInput(HWND window, UINT message, WPARAM wParam) {
  const bool isKey = message == WM_KEYDOWN && isControlKey(wParam);
  if (!isKey && !isPress(message)) return false;
  const HWND form = GetAncestor(window, GA_ROOT);
  SendMessageW(form, WM_CHANGEUISTATE, MAKEWPARAM(isKey ? UIS_CLEAR : UIS_SET, UISF_HIDEFOCUS), 0);
  if (isKey && wParam == VK_TAB && !isDown(VK_CONTROL)) {
    SetFocus(GetNextDlgTabItem(form, GetFocus(), isDown(VK_SHIFT) ? TRUE : FALSE));
    return true;
  }
  if (isKey && wParam == VK_RETURN && isPushButton(window)) {
    SendMessageW(window, BM_CLICK, 0, 0);
    return true;
  }
  return false;
}

bool focusShows(HWND window) {
  return GetFocus() == window &&
         (SendMessageW(GetAncestor(window, GA_ROOT), WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
}

bool isDown(int key) {
  return GetKeyState(key) < 0;
}

int pressedModifiers() {
  return (isDown(VK_SHIFT) ? kShiftKey : 0) + (isDown(VK_CONTROL) ? kCtrlKey : 0) +
         (isDown(VK_MENU) ? kAltKey : 0);
}

}  // namespace fiar::win32
