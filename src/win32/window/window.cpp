#include "win32/window/window.h"

#include "win32/error.h"
#include "win32/window/keyboard.h"

namespace fiar::win32 {
namespace {

constexpr const wchar_t* kClassName = L"FiveInARowWindow";

// Gives no brush: the background is painted with everything else, so nothing is ever erased first.
void registerClass(WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = kClassName;
  require(RegisterClassExW(&description), "RegisterClassEx");
}

}  // namespace

Window::~Window() {
  // The messages of its end would find an object that is half gone.
  if (handle_) SetWindowLongPtrW(handle_.get(), GWLP_USERDATA, 0);
}

void Window::create(const wchar_t* title, DWORD style, DWORD extendedStyle, HWND parent) {
  [[maybe_unused]] static const bool registered = (registerClass(&Window::procedure), true);
  const int position = parent == nullptr ? CW_USEDEFAULT : 0;
  const int size = parent == nullptr ? CW_USEDEFAULT : 1;
  const HWND created = CreateWindowExW(extendedStyle, kClassName, title, style, position, position, size,
                                       size, parent, nullptr, GetModuleHandleW(nullptr), this);
  handle_.reset(require(created, "CreateWindowEx"));
}

LRESULT CALLBACK Window::procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  if (message == WM_NCCREATE) {
    const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* const window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
  // Before create() is done the object does not know its window yet.
  if (window == nullptr || !window->handle_) return DefWindowProcW(handle, message, wParam, lParam);
  try {
    if (!handleFormInput(handle, message, wParam)) return window->onMessage(message, wParam, lParam);
  } catch (...) {
    window->handlers_.fail();
  }
  return 0;
}

LRESULT Window::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      PAINTSTRUCT painting{};
      paintBackground(require(BeginPaint(handle(), &painting), "BeginPaint"), painting.rcPaint);
      EndPaint(handle(), &painting);
      return 0;
    }
    case WM_PRINTCLIENT: {
      RECT area{};
      GetClientRect(handle(), &area);
      paintBackground(reinterpret_cast<HDC>(wParam), area);
      return 0;
    }
    default:
      return DefWindowProcW(handle(), message, wParam, lParam);
  }
}

PixelSize clientSize(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  return {.width = area.right - area.left, .height = area.bottom - area.top};
}

}  // namespace fiar::win32
