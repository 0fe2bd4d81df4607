#include "win32/window/check_box_drawing.h"

#include <algorithm>
#include <cmath>

#include "forms/painter.h"
#include "forms/picture_box.h"
#include "win32/window/fonts.h"
#include "win32/window/pixel_buffer.h"

namespace fiar::win32 {
namespace {

constexpr double kTwipsPerPixel = 15;
// In twips.
constexpr float kSide = 210;
constexpr double kGap = 90;
constexpr Color kFrameColor = 0x00333333;
constexpr Color kInsideColor = kWhite;
constexpr Color kPressedColor = 0x00D9D9D9;

/// The small square with its mark, in a picture of its own size.
void drawBox(PictureBox& box, int value) {
  box.DrawWidth = 1;
  box.Line(0, 0, kSide, 0, kFrameColor);
  box.Line(0, kSide, kSide, kSide, kFrameColor);
  box.Line(0, 0, 0, kSide, kFrameColor);
  box.Line(kSide, 0, kSide, kSide, kFrameColor);
  box.DrawWidth = 2;
  if (value == 1) {
    box.Line(0.22F * kSide, 0.52F * kSide, 0.42F * kSide, 0.72F * kSide, kFrameColor);
    box.Line(0.42F * kSide, 0.72F * kSide, 0.78F * kSide, 0.28F * kSide, kFrameColor);
  } else if (value != 0) {
    box.DrawWidth = 6;
    box.Line(0.3F * kSide, 0.5F * kSide, 0.7F * kSide, 0.5F * kSide, kFrameColor);
  }
}

}  // namespace

void drawCheckBox(const PixelBuffer& buffer, const CheckBoxLook& look) {
  const int height = buffer.size().height;
  const int side = std::min(height, std::max(1, static_cast<int>(std::lround(kSide * look.scale))));
  const int gap = static_cast<int>(std::lround(kGap * look.scale));
  const PaintScale scale{.pixelsPerTwip = look.scale, .pixelsPerDrawWidth = look.scale * kTwipsPerPixel};

  const BitmapView whole = buffer.pixels();
  paint({}, look.backColor, scale, whole, {});
  const int top = (height - side) / 2;
  const int left = std::min(top, whole.width - side);
  if (left < 0) return;
  PictureBox box;
  drawBox(box, look.value);
  paint(box.drawing(), look.pressed ? kPressedColor : kInsideColor, scale,
        {whole.row(top) + left, side, side, whole.stride}, {});

  RECT text{left + side + gap, 0, whole.width, height};
  drawTextIn(buffer.context(), look.caption, text, TextPlace::Left, look.font, look.textColor);
  if (!look.focused) return;
  auto* const brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
  SetDCBrushColor(buffer.context(), look.textColor);
  const RECT frame{0, 0, whole.width, height};
  FrameRect(buffer.context(), &frame, brush);
}

}  // namespace fiar::win32
