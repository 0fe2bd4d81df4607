#include "forms/form_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace fiar {
namespace {

/// A form like the game's: a background with a square board in it.
struct FormLayoutTest : testing::Test {
  Form form;
  PictureBox background;
  PictureBox board;

  FormLayoutTest() {
    form.Width = 12060;
    form.Height = 10170;
    board.Left = 1965;
    board.Top = 90;
    board.Width = board.Height = 9960;
    board.Container = &background;
  }
};

TEST_F(FormLayoutTest, KeepsASquareSquareAndTheFormInTheMiddleAtEverySize) {
  for (int width = 300; width < 2500; width += 37) {
    for (const int height : {250, 683, 1024, 1601}) {
      SCOPED_TRACE(testing::Message() << width << " x " << height);
      const FormLayout layout(form, {width, height});
      const PixelRect place = layout.place(board);
      EXPECT_EQ(place.width, place.height);
      // The place in the container does not depend on where the container lies.
      EXPECT_NEAR(place.left, board.Left * layout.scale(), 1);
      const PixelRect whole = layout.place(background);
      const PixelSize shown = areaAt(form, layout.scale());
      EXPECT_NEAR(2 * whole.left, width - shown.width, 1);
      EXPECT_NEAR(2 * whole.top, height - shown.height, 1);
      EXPECT_TRUE(std::abs(width - shown.width) <= 1 || std::abs(height - shown.height) <= 1);
    }
  }
  // Pixel for pixel at 96 dots per inch.
  const PixelSize area = areaAt(form, designScale(96));
  EXPECT_EQ(area, (PixelSize{804, 678}));
  EXPECT_EQ(FormLayout(form, area).place(board), (PixelRect{131, 6, 664, 664}));
}

TEST_F(FormLayoutTest, DraggingKeepsTheProportions) {
  form.Width = 200;
  form.Height = 100;
  using Edges = DraggedEdges;
  using Case = std::tuple<PixelSize, Edges, double, PixelSize>;
  for (const auto& [asked, edges, most, given] :
       {Case({300, 999}, Edges::Side, 3, {300, 150}), Case({999, 120}, Edges::TopOrBottom, 3, {240, 120}),
        Case({300, 120}, Edges::Corner, 3, {300, 150}), Case({300, 170}, Edges::Corner, 3, {340, 170}),
        Case({10, 10}, Edges::Corner, 3, {100, 50}), Case({5000, 10}, Edges::Side, 3, {600, 300}),
        Case({300, 150}, Edges::Corner, 0.25, {100, 50})}) {
    EXPECT_EQ(areaWhileDragging(form, asked, edges, 0.5, most), given)
        << asked.width << " x " << asked.height;
  }
}

TEST_F(FormLayoutTest, KeysMoveThePointerFromCellToCellWithinThePicture) {
  // Cells in a row, the place, the way from there, and the cell that it leads to. The last four start off the
  // picture or have odd cells: of no whole twips, larger than the picture.
  using Case = std::tuple<double, PicturePoint, KeyMove, double, double>;
  for (const auto& [cells, from, move, column, row] :
       {Case(15, {5000, 5000}, {1, 0}, 8, 7), Case(15, {663, 664}, {0, 0}, 0, 1),
        Case(15, {10, 10}, {-1, 0}, 0, 0), Case(15, {9959, 9959}, {0, 1}, 14, 14),
        Case(10, {-3000, 400}, {1, 0}, 1, 0), Case(10, {700, 20000}, {0, 0}, 0, 9),
        Case(7, {9959, 9959}, {1, 1}, 6, 6), Case(0.5, {5000, 5000}, {1, 0}, 0, 0)}) {
    board.KeyStep = board.Width / cells;
    const PicturePoint to = movedByKey(board, from, move);
    EXPECT_FLOAT_EQ(to.x, static_cast<float>((column + 0.5) * board.KeyStep)) << from.x;
    EXPECT_FLOAT_EQ(to.y, static_cast<float>((row + 0.5) * board.KeyStep)) << from.y;
  }
}

}  // namespace
}  // namespace fiar
