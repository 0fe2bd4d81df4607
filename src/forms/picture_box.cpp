#include "forms/picture_box.h"

#include <algorithm>
#include <cmath>

#include "forms/units.h"

namespace fiar {
namespace {

// Distance between the lines of a text, as a multiple of the font's size.
constexpr double kLineSpacing = 1.2;

std::uint16_t lineWidth(int drawWidth) {
  return static_cast<std::uint16_t>(std::clamp(drawWidth, 1, 1000));
}

// A size that is meant to hold a whole number of cells may miss it by the rounding of the division.
constexpr double kRoundingRoom = 1e-6;

float movedAlong(double length, double step, float from, int cells) {
  const double last = std::max(0.0, std::floor(length / step + kRoundingRoom) - 1);
  const double cell = std::clamp(std::floor(from / step), 0.0, last);
  return static_cast<float>((std::clamp(cell + cells, 0.0, last) + 0.5) * step);
}

}  // namespace

void PictureBox::Cls() {
  ++revision_;
  drawing_.clear();
  CurrentX = 0;
  CurrentY = 0;
}

void PictureBox::Line(float x1, float y1, float x2, float y2, Color color) {
  ++revision_;
  drawing_.commands.push_back({.kind = DrawCommand::Kind::Line,
                               .drawWidth = lineWidth(DrawWidth),
                               .color = color,
                               .x1 = x1,
                               .y1 = y1,
                               .x2 = x2,
                               .y2 = y2});
}

void PictureBox::Circle(float x, float y, float radius, Color color) {
  if (!(radius > 0)) return;
  const bool filled = FillStyle == fiar::FillStyle::Solid;
  ++revision_;
  drawing_.commands.push_back({.kind = DrawCommand::Kind::Circle,
                               .filled = filled,
                               .drawWidth = lineWidth(DrawWidth),
                               .color = color,
                               .fill = filled ? FillColor : kBlack,
                               .x1 = x,
                               .y1 = y,
                               .x2 = radius});
}

void PictureBox::Print(TextView text) {
  ++revision_;
  drawing_.commands.push_back({.kind = DrawCommand::Kind::Print,
                               .color = ForeColor,
                               .x1 = CurrentX,
                               .y1 = CurrentY,
                               .textStart = static_cast<std::uint32_t>(drawing_.characters.size()),
                               .textLength = static_cast<std::uint32_t>(text.size())});
  drawing_.characters.insert(drawing_.characters.end(), text.begin(), text.end());
  CurrentX = 0;
  CurrentY += static_cast<float>(Font.points * kTwipsPerPoint * kLineSpacing);
}

PicturePoint movedByKey(const PictureBox& box, PicturePoint from, KeyMove move) {
  return {.x = movedAlong(box.Width, box.KeyStep, from.x, move.columns),
          .y = movedAlong(box.Height, box.KeyStep, from.y, move.rows)};
}

}  // namespace fiar
