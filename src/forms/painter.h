#pragma once

#include <functional>
#include <limits>

#include "forms/drawing_list.h"
#include "forms/pixels.h"
#include "forms/units.h"
#include "platform/text.h"

namespace fiar {

/// How the units of a picture box become pixels.
struct PaintScale {
  double pixelsPerTwip = 1 / kTwipsPerPixel;
  double pixelsPerDrawWidth = 1;  ///< width in pixels of a line of DrawWidth 1
};

/// Draws a line of text with its top left corner at pixel (x, y) of the bitmap, and changes no pixel outside
/// `area`, which lies within the bitmap.
using TextDrawer = std::function<void(const BitmapView& target, const PixelRect& area, TextView text, int x,
                                      int y, Color color)>;

inline constexpr PixelRect kWholePicture{.width = std::numeric_limits<int>::max(),
                                         .height = std::numeric_limits<int>::max()};

/// Paints a picture: the background colour, then the commands in order, anti-aliased and clipped to the
/// bitmap. Horizontal and vertical lines cover whole pixels and all have the same width; one that lies on the
/// picture's edge is moved inside so that it is seen in full. Coordinates may be anything: what cannot be
/// seen is left out, and so is a command with a coordinate that is infinite or not a number. A scale that is
/// not a positive number below a million leaves only the background; a line is never thinner than one pixel.
/// The top byte of every pixel becomes 0. Allocates nothing.
/// \param target the whole picture's bitmap; no pixels: nothing is painted.
/// \param drawText may be empty: texts are then left out.
/// \param area what to paint of the picture; its pixels get the values that a painting of the whole picture
///   gives them, all others stay as they are.
void paint(const DrawingList& drawing, Color backColor, const PaintScale& scale, const BitmapView& target,
           const TextDrawer& drawText, const PixelRect& area = kWholePicture);

/// The area to paint when a bitmap shows one drawing and is to show another, with the same background and
/// scale: it contains all pixels in which they can differ. Drawings that are equal at both ends and differ in
/// a few commands between need only the area of those. Empty (0 pixels wide) if no pixel can differ.
/// Allocates nothing.
/// \param size that of the bitmap.
PixelRect changedArea(const DrawingList& before, const DrawingList& after, const PaintScale& scale,
                      PixelSize size);

}  // namespace fiar
