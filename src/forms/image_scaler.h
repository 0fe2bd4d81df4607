#pragma once

#include "forms/pixels.h"

namespace fiar {

/// Shows one image at another size, sharply and without steps: every pixel of the target is a weighted sum of
/// the pixels of the source about its place (Catmull-Rom, as wide as the reduction asks). The same size is a
/// copy. The top byte of every pixel becomes 0. An image without pixels leaves the target as it is.
void scaleImage(const BitmapView& source, const BitmapView& target);

}  // namespace fiar
