#include "platform/key_pointer.h"

#include <gtest/gtest.h>

namespace fiar {
namespace {

TEST(KeyPointer, GoesFromCellToCellAndStaysInThePicture) {
  PictureBox box;
  box.Width = 9960;
  box.Height = 9960;
  struct Case {
    double cells = 0;  ///< in a row
    PicturePoint from;
    KeyMove move;
    double column = 0, row = 0;  ///< where it has to go
  };
  for (const Case& one : {
           Case{15, {5000, 5000}, {1, 0}, 8, 7}, Case{15, {5000, 5000}, {0, -1}, 7, 6},
           Case{15, {663, 664}, {0, 0}, 0, 1}, Case{15, {10, 10}, {-1, 0}, 0, 0},
           Case{15, {9959, 9959}, {0, 1}, 14, 14},
           Case{10, {-3000, 400}, {1, 0}, 1, 0},   // dragged off the picture
           Case{10, {700, 20000}, {0, 0}, 0, 9},   // the same at the other side
           Case{7, {9959, 9959}, {1, 1}, 6, 6},    // cells of no whole number of twips
           Case{0.5, {5000, 5000}, {1, 0}, 0, 0},  // a cell larger than the picture
       }) {
    box.KeyStep = box.Width / one.cells;
    const PicturePoint to = movedByKey(box, one.from, one.move);
    EXPECT_FLOAT_EQ(to.x, static_cast<float>((one.column + 0.5) * box.KeyStep)) << one.from.x;
    EXPECT_FLOAT_EQ(to.y, static_cast<float>((one.row + 0.5) * box.KeyStep)) << one.from.y;
  }
}

}  // namespace
}  // namespace fiar
