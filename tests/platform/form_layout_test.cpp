#include "platform/form_layout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace fiar {
namespace {

/// A form like the game's: a background with a square board in it.
struct BoardForm {
  Form form;
  PictureBox background;
  PictureBox board;

  BoardForm() {
    form.Width = 12060;
    form.Height = 10170;
    board.Left = 1965;
    board.Top = 90;
    board.Width = 9960;
    board.Height = 9960;
    board.Container = &background;
  }
};

TEST(FormLayout, ShowsTheDesignPixelForPixelAt96DotsPerInch) {
  BoardForm design;
  const PixelSize area = areaAt(design.form, designScale(96));
  EXPECT_EQ(area, (PixelSize{804, 678}));
  const FormLayout layout(design.form, area);
  EXPECT_EQ(layout.place(design.background), (PixelRect{0, 0, 1, 1}));
  EXPECT_EQ(layout.place(design.board), (PixelRect{131, 6, 664, 664}));
}

TEST(FormLayout, KeepsASquareSquareAndTheFormInTheMiddleAtEverySize) {
  BoardForm design;
  for (int width = 300; width < 2500; width += 37) {
    for (const int height : {250, 683, 1024, 1601}) {
      const FormLayout layout(design.form, {width, height});
      const PixelRect board = layout.place(design.board);
      EXPECT_EQ(board.width, board.height);
      const PixelRect whole = layout.place(design.background);
      const PixelSize shown = areaAt(design.form, layout.scale());
      EXPECT_LE(std::abs(width - shown.width - 2 * whole.left), 1) << width << " x " << height;
      EXPECT_LE(std::abs(height - shown.height - 2 * whole.top), 1) << width << " x " << height;
      EXPECT_TRUE(std::abs(width - shown.width) <= 1 || std::abs(height - shown.height) <= 1);
      // The place in the container does not depend on where the container lies.
      EXPECT_NEAR(board.left, design.board.Left * layout.scale(), 1);
    }
  }
}

TEST(FormLayout, DraggingKeepsTheProportions) {
  Form form;
  form.Width = 200;
  form.Height = 100;
  struct Case {
    PixelSize asked;
    DraggedEdges edges = DraggedEdges::Corner;
    PixelSize given;
  };
  for (const Case& one : {
           Case{{300, 999}, DraggedEdges::Side, {300, 150}},
           Case{{999, 120}, DraggedEdges::TopOrBottom, {240, 120}},
           Case{{300, 120}, DraggedEdges::Corner, {300, 150}},
           Case{{300, 170}, DraggedEdges::Corner, {340, 170}},
           Case{{10, 10}, DraggedEdges::Corner, {100, 50}},
           Case{{5000, 10}, DraggedEdges::Side, {600, 300}},
       }) {
    EXPECT_EQ(areaWhileDragging(form, one.asked, one.edges, 0.5, 3), one.given)
        << one.asked.width << " x " << one.asked.height;
  }
  EXPECT_EQ(areaWhileDragging(form, {300, 150}, DraggedEdges::Corner, 0.5, 0.25), (PixelSize{100, 50}));
}

}  // namespace
}  // namespace fiar
