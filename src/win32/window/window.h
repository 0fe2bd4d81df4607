#pragma once

#include <windows.h>

#include "forms/form_layout.h"
#include "win32/handle.h"
#include "win32/window/event_gate.h"

namespace fiar::win32 {

class ControlWindow;

/// A window whose messages go to an object. An exception in its handling of a message goes to the gate.
class Window {
public:
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  Window(Window&&) = delete;
  Window& operator=(Window&&) = delete;
  virtual ~Window();

  HWND handle() const { return handle_.get(); }

protected:
  /// The gate must outlive the window.
  explicit Window(EventGate& gate) : gate_(gate) {}

  /// Creates the system's window, hidden, at a default place.
  /// \param title what the window says of itself; \param parent null for a window of its own.
  void create(const wchar_t* title, DWORD style, DWORD extendedStyle, HWND parent);

  /// Deals with one message. The base deals with what the controls in the window tell it, gives it the
  /// background that paintBackground() paints, and leaves everything else to the system.
  virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);
  /// Paints the window's own picture, without the controls in it.
  virtual void paintBackground(HDC context, const RECT& area) = 0;

  EventGate& gate() const { return gate_; }

private:
  static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
  void onPaint();

  EventGate& gate_;
  WindowHandle handle_;
};

/// The size of the window's client area in pixels.
PixelSize clientSize(HWND window);

}  // namespace fiar::win32
