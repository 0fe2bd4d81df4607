#pragma once

#include <windows.h>

#include "forms/form_layout.h"
#include "win32/handle.h"
#include "win32/window/handler_guard.h"

namespace fiar::win32 {

/// A window whose messages go to an object. An exception in its handling of a message goes to the
/// guard.
class Window {
public:
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  HWND handle() const { return handle_.get(); }

protected:
  /// The guard must outlive the window's messages.
  explicit Window(HandlerGuard& handlers) : handlers_(handlers) {}

  /// Creates the system's window, hidden, at a default place.
  /// \param title what the window says of itself; \param parent null for a window of its own.
  void create(const wchar_t* title, DWORD style, DWORD extendedStyle, HWND parent);

  /// Handles one message. The base gives the window the background that paintBackground() paints, and passes
  /// everything else to the system.
  virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);
  /// Paints the window's own picture, without the controls in it. Must not throw.
  virtual void paintBackground(HDC context, const RECT& area) = 0;

  HandlerGuard& handlers() const { return handlers_; }

private:
  static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  HandlerGuard& handlers_;
  WindowHandle handle_;
};

/// The size of the window's client area in pixels.
PixelSize clientSize(HWND window);

}  // namespace fiar::win32
