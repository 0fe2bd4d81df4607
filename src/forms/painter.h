#pragma once

#include <functional>

#include "forms/bitmap.h"
#include "forms/color.h"
#include "forms/drawing_list.h"
#include "forms/units.h"
#include "platform/text.h"

namespace fiar {

/// Draws a line of text with its top left corner at a pixel of the bitmap; clips what lies outside.
using TextDrawer = std::function<void(const BitmapView& target, TextView text, int x, int y, Color color)>;

/// How the units of a picture box become pixels.
struct PaintScale {
  double pixelsPerTwip = 1 / kTwipsPerPixel;
  double pixelsPerDrawWidth = 1;  ///< width in pixels of a line of DrawWidth 1
};

/// Paints a picture whole: the background colour, then the commands in order, anti-aliased and clipped to the
/// bitmap. Horizontal and vertical lines cover whole pixels and all have the same width; one that lies on the
/// picture's edge is moved inside so that it is seen in full. Coordinates may be anything: what cannot be
/// seen is left out, and so is a command with a coordinate that is infinite or not a number. A scale that is
/// not a positive number below a million leaves the background alone; a line is never thinner than one pixel.
/// The top byte of every pixel becomes 0. `drawText` may be empty: texts are then left out. Allocates
/// nothing.
void paint(const DrawingList& drawing, Color backColor, const PaintScale& scale, const BitmapView& target,
           const TextDrawer& drawText);

}  // namespace fiar
