#include "forms/key_pointer.h"

#include <algorithm>
#include <cmath>

namespace fiar {
namespace {

// A size that is meant to hold a whole number of cells may miss it by the rounding of the division.
constexpr double kRoundingRoom = 1e-6;

float movedAlong(double length, double step, float from, int cells) {
  const double last = std::max(0.0, std::floor(length / step + kRoundingRoom) - 1);
  const double cell = std::clamp(std::floor(from / step), 0.0, last);
  return static_cast<float>((std::clamp(cell + cells, 0.0, last) + 0.5) * step);
}

}  // namespace

PicturePoint movedByKey(const PictureBox& box, PicturePoint from, KeyMove move) {
  return {.x = movedAlong(box.Width, box.KeyStep, from.x, move.columns),
          .y = movedAlong(box.Height, box.KeyStep, from.y, move.rows)};
}

}  // namespace fiar
