#pragma once

#include <windows.h>

#include <utility>

namespace fiar::win32 {

/// Owns a handle of the type that `Traits` describes: its `Handle` type, `none()`, and `close(handle)`.
template <class Traits>
class UniqueHandle {
public:
  using Handle = typename Traits::Handle;

  UniqueHandle() = default;
  explicit UniqueHandle(Handle handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  ~UniqueHandle() { reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != Traits::none(); }
  /// Gives the handle to the caller, who closes it.
  Handle release() { return std::exchange(handle_, Traits::none()); }
  /// Closes what is held and takes another handle, or none.
  void reset(Handle handle = Traits::none()) {
    const Handle old = std::exchange(handle_, handle);
    if (old != Traits::none()) Traits::close(old);
  }

private:
  Handle handle_ = Traits::none();
};

/// Mutexes, events, processes.
struct KernelObjectTraits {
  using Handle = HANDLE;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { CloseHandle(handle); }
};
using KernelHandle = UniqueHandle<KernelObjectTraits>;

/// Fonts, brushes, pens, bitmaps: whatever DeleteObject takes. It must not be selected when it is closed.
template <class Type>
struct GdiObjectTraits {
  using Handle = Type;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DeleteObject(handle); }
};
using FontHandle = UniqueHandle<GdiObjectTraits<HFONT>>;
using BrushHandle = UniqueHandle<GdiObjectTraits<HBRUSH>>;
using BitmapHandle = UniqueHandle<GdiObjectTraits<HBITMAP>>;

/// A device context of one's own, from CreateCompatibleDC.
struct DeviceContextTraits {
  using Handle = HDC;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DeleteDC(handle); }
};
using DeviceContext = UniqueHandle<DeviceContextTraits>;

struct IconTraits {
  using Handle = HICON;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DestroyIcon(handle); }
};
using IconHandle = UniqueHandle<IconTraits>;

struct WindowTraits {
  using Handle = HWND;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DestroyWindow(handle); }
};
using WindowHandle = UniqueHandle<WindowTraits>;

/// Selects an object into a device context and puts the old one back in the end.
class SelectedObject {
public:
  SelectedObject(HDC context, HGDIOBJ object) : context_(context), old_(SelectObject(context, object)) {}
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;
  ~SelectedObject() { SelectObject(context_, old_); }

private:
  HDC context_;
  HGDIOBJ old_;
};

/// The device context of a window's client area.
class ClientContext {
public:
  explicit ClientContext(HWND window) : window_(window), context_(GetDC(window)) {}
  ClientContext(const ClientContext&) = delete;
  ClientContext& operator=(const ClientContext&) = delete;
  ~ClientContext() { ReleaseDC(window_, context_); }

  HDC get() const { return context_; }

private:
  HWND window_;
  HDC context_;
};

}  // namespace fiar::win32
