#include "win32/window/keyboard.h"

#include "forms/controls.h"

namespace fiar::win32 {
namespace {

bool isPushButton(HWND window) {
  return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

bool isPress(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

bool isKeyForControls(WPARAM key) {
  switch (key) {
    case VK_TAB:
    case VK_RETURN:
    case VK_SPACE:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool handleFormInput(HWND window, UINT message, WPARAM wParam) {
  const bool isKey = message == WM_KEYDOWN && isKeyForControls(wParam);
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
