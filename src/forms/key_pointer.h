#pragma once

#include "forms/picture_box.h"

namespace fiar {

/// A position in a picture box, in twips.
struct PicturePoint {
  float x = 0;
  float y = 0;

  bool operator==(const PicturePoint&) const = default;
};

/// Steps of the arrow keys, in cells.
struct KeyMove {
  int columns = 0;
  int rows = 0;
};

/// Where the pointer goes when a key moves it: a picture box with a KeyStep is a grid of cells of that size,
/// and the pointer goes to the middle of the cell that lies `move` away from the one it is in. It never
/// leaves the picture, and comes back from outside; no move takes it to the middle of its own cell.
/// \param box its KeyStep must be positive.
PicturePoint movedByKey(const PictureBox& box, PicturePoint from, KeyMove move);

}  // namespace fiar
