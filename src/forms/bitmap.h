#pragma once

#include <cstddef>
#include <cstdint>

namespace fiar {

/// A view of 32-bit pixels, 0xXXRRGGBB, rows from top to bottom. Does not own them.
struct BitmapView {
  std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;  ///< pixels from one row to the next, >= width

  std::uint32_t* row(int y) const {
    return pixels + static_cast<std::ptrdiff_t>(y) * static_cast<std::ptrdiff_t>(stride);
  }
};

}  // namespace fiar
