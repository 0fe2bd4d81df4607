#pragma once

#include <cstdint>

namespace fiar {

/// A colour as 0x00BBGGRR.
using Color = std::uint32_t;

inline constexpr Color kBlack = 0x00000000;
inline constexpr Color kWhite = 0x00FFFFFF;
inline constexpr Color kGreen = 0x0000FF00;

constexpr std::uint8_t redOf(Color color) {
  return static_cast<std::uint8_t>(color);
}
constexpr std::uint8_t greenOf(Color color) {
  return static_cast<std::uint8_t>(color >> 8);
}
constexpr std::uint8_t blueOf(Color color) {
  return static_cast<std::uint8_t>(color >> 16);
}

}  // namespace fiar
