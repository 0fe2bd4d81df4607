#pragma once

#include <windows.h>

#include <optional>

#include "forms/pixels.h"
#include "win32/handle.h"

namespace fiar::win32 {

/// A picture in memory that both the program and the system can draw on.
class PixelBuffer {
public:
  PixelBuffer() = default;
  explicit PixelBuffer(PixelSize size) { resize(size); }

  /// Takes another size, at least 1 x 1; the content is undefined afterwards if the size is a new one.
  void resize(PixelSize size);

  PixelSize size() const { return size_; }
  /// The pixels, once the system's drawing is done.
  BitmapView pixels() const;
  HDC context() const { return context_.get(); }

  /// Shows the part of the picture that lies in `area` at the same place of another device context.
  void show(HDC target, const RECT& area) const;

private:
  DeviceContext context_;
  BitmapHandle bitmap_;
  std::optional<SelectedObject> selected_;
  std::uint32_t* pixels_ = nullptr;
  PixelSize size_;
};

}  // namespace fiar::win32
