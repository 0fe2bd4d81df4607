#include "win32/window/pixel_buffer.h"

#include <algorithm>

#include "win32/error.h"

namespace fiar::win32 {

void PixelBuffer::resize(PixelSize size) {
  if (size == size_) return;
  if (!context_) context_.reset(require(CreateCompatibleDC(nullptr), "CreateCompatibleDC"));
  selected_.reset();
  bitmap_.reset();
  size_ = {};

  BITMAPINFO description{};
  description.bmiHeader.biSize = sizeof(description.bmiHeader);
  description.bmiHeader.biWidth = size.width;
  description.bmiHeader.biHeight = -size.height;  // rows from top to bottom
  description.bmiHeader.biPlanes = 1;
  description.bmiHeader.biBitCount = 32;
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(context_.get(), &description, DIB_RGB_COLORS, &pixels, nullptr, 0);
  bitmap_.reset(require(bitmap, "CreateDIBSection"));
  selected_.emplace(context_.get(), bitmap_.get());
  pixels_ = static_cast<std::uint32_t*>(pixels);
  size_ = size;
}

BitmapView PixelBuffer::pixels() const {
  GdiFlush();
  return {pixels_, size_.width, size_.height, size_.width};
}

void PixelBuffer::show(HDC target, const RECT& area) const {
  BitBlt(target, area.left, area.top, area.right - area.left, area.bottom - area.top, context_.get(),
         area.left, area.top, SRCCOPY);
}

}  // namespace fiar::win32
