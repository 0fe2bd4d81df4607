#pragma once

#include "forms/controls.h"
#include "forms/pixels.h"
#include "win32/handle.h"

namespace fiar::win32 {

/// Makes the font for a typeface at a scale (pixels per twip). Where the system lacks the typeface it takes
/// the nearest one that it has; an empty name or a size of 0 gives that of the user's own font for controls.
FontHandle makeFont(const FontSpec& font, double scale);

/// Draws what lies in an area of one line of text that has its top left corner at a point.
void drawTextAt(HDC context, const PixelRect& area, TextView text, int x, int y, HFONT font, Color color);

/// Where a text stands between the left and right edges of its area. It always stands in the middle between
/// the upper and lower ones.
enum class TextPlace { Left, Centre };

/// Draws one line of text in an area.
void drawTextIn(HDC context, TextView text, RECT area, TextPlace place, HFONT font, Color color);

}  // namespace fiar::win32
