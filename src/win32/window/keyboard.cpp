#include "win32/window/keyboard.h"

#include <algorithm>

#include "forms/controls.h"

namespace fiar::win32 {
namespace {

bool isDown(int key) {
  return GetKeyState(key) < 0;
}

bool isPushButton(HWND window) {
  return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

void moveFocus(const std::vector<HWND>& tabOrder, bool backwards) {
  if (tabOrder.empty()) return;
  const auto focused = std::find(tabOrder.begin(), tabOrder.end(), GetFocus());
  if (focused == tabOrder.end()) {
    SetFocus(backwards ? tabOrder.back() : tabOrder.front());
  } else if (backwards) {
    SetFocus(focused == tabOrder.begin() ? tabOrder.back() : *(focused - 1));
  } else {
    SetFocus(focused + 1 == tabOrder.end() ? tabOrder.front() : *(focused + 1));
  }
}

}  // namespace

bool handleDialogKey(const MSG& message, const std::vector<HWND>& tabOrder) {
  if (message.message != WM_KEYDOWN) return false;
  switch (message.wParam) {
    case VK_TAB:
      if (isDown(VK_CONTROL)) return false;
      moveFocus(tabOrder, isDown(VK_SHIFT));
      return true;
    case VK_RETURN:
      if (!isPushButton(message.hwnd)) return false;
      SendMessageW(message.hwnd, BM_CLICK, 0, 0);
      return true;
    default:
      return false;
  }
}

std::optional<bool> focusHasToShow(const MSG& message) {
  switch (message.message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
      return false;
    case WM_KEYDOWN:
      switch (message.wParam) {
        case VK_TAB:
        case VK_RETURN:
        case VK_SPACE:
        case VK_LEFT:
        case VK_RIGHT:
        case VK_UP:
        case VK_DOWN:
          return true;
        default:
          return std::nullopt;
      }
    default:
      return std::nullopt;
  }
}

int pressedModifiers() {
  return (isDown(VK_SHIFT) ? kShiftKey : 0) + (isDown(VK_CONTROL) ? kCtrlKey : 0) +
         (isDown(VK_MENU) ? kAltKey : 0);
}

}  // namespace fiar::win32
