#pragma once

#include <cstddef>
#include <cstdint>

namespace fiar {

/// A colour as 0x00BBGGRR.
using Color = std::uint32_t;

inline constexpr Color kBlack = 0x00000000;
inline constexpr Color kWhite = 0x00FFFFFF;
inline constexpr Color kGreen = 0x0000FF00;

/// A width and a height in pixels.
struct PixelSize {
  int width = 0;
  int height = 0;

  bool operator==(const PixelSize&) const = default;
};

/// Where something lies, in pixels.
struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const PixelRect&) const = default;
};

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
