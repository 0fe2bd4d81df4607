#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "forms/form_layout.h"
#include "forms/painter.h"
#include "forms/picture_box.h"

namespace fiar {
namespace {

constexpr std::uint32_t kCanary = 0xDEADBEEF;

/// A bitmap with a picture of up to 100 x 100 pixels in its corner; what is beside it must stay as it is.
struct Canvas {
  std::vector<std::uint32_t> pixels = std::vector(std::size_t{103} * 103, kCanary);

  BitmapView view(PixelSize size) { return {pixels.data(), size.width, size.height, 103}; }
};

TEST(Painter, CirclesHaveTheirAreaAndSoftEdges) {
  const std::array<float, 4> circles[] = {
      {50, 50, 19.92F, 2}, {50.5F, 50.5F, 20, 3}, {51.1F, 50.7F, 2.3F, 1}, {50.2F, 50.9F, 1.1F, 4}};
  for (const auto& [x, y, radius, width] : circles) {
    for (const bool filled : {true, false}) {
      SCOPED_TRACE(testing::Message() << radius << (filled ? " filled" : ""));
      PictureBox box;
      box.DrawWidth = static_cast<int>(width);
      box.FillStyle = filled ? FillStyle::Solid : FillStyle::Transparent;
      box.FillColor = 0xFF0000;
      box.Circle(x, y, radius, 0x0000FF);
      Canvas canvas;
      paint(box.drawing(), kGreen, {.pixelsPerTwip = 1}, canvas.view({100, 100}), {});
      for (int i = 0; i < 100 * 100; ++i) {
        const int column = i % 100;
        const int row = i / 100;
        // How much of the pixel lies in a disc.
        const double distance = std::hypot(column + 0.5 - x, row + 0.5 - y);
        const auto within = [&](double reach) { return std::clamp(reach - distance + 0.5, 0.0, 1.0); };
        const double disc = within(radius + width / 2);
        const double hole = radius > width / 2 ? within(radius - width / 2) : 0;
        const std::uint32_t pixel = canvas.view({100, 100}).row(row)[column];
        ASSERT_NEAR(pixel >> 16 & 0xFF, 255 * (disc - hole), 25) << "red, the rim";
        ASSERT_NEAR(pixel & 0xFF, filled ? 255 * hole : 0, 25) << "blue, the filling";
        ASSERT_NEAR(pixel >> 8 & 0xFF, 255 * (filled ? 1 - disc : 1 - disc + hole), 25) << "green, the rest";
      }
    }
  }
}

TEST(Painter, StraightLinesAreAlikeAtEveryScaleAndSeenInFullAtTheEdges) {
  // The pixels of a line's width of 1, the line's place, and which of twelve pixels a line of width 2 covers.
  const std::tuple<double, float, std::string_view> cases[] = {
      {1, 5, "....##......"},     {1, 5.4F, "....##......"},  {1, 5.5F, ".....##....."},
      {1, 0, "##.........."},     {1, -0.4F, "##.........."}, {1, 12.4F, "..........##"},
      {1, -0.6F, "............"}, {1.25, 7, "......###..."},  {3, 6, "...######..."},
      {0.3, 6, "......#....."}};
  for (const auto& [scale, at, expected] : cases) {
    PictureBox box;
    box.DrawWidth = 2;
    box.Line(at, 6, at, 6, kBlack);
    Canvas canvas;
    paint(box.drawing(), kWhite, {1, scale}, canvas.view({12, 12}), {});
    std::string seen;
    for (int x = 0; x < 12; ++x) seen += canvas.view({12, 12}).row(6)[x] == 0 ? '#' : '.';
    EXPECT_EQ(seen, expected) << scale << ' ' << at;
  }
}

/// A line, a circle or a text, anywhere or on the edges of a picture of 900 twips.
DrawCommand randomCommand(std::mt19937& random) {
  constexpr std::array kOdd{0.0F, 0.0F, 900.0F, 900.0F, -1e9F, 1e38F, INFINITY, NAN};
  const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  DrawCommand command{.kind = static_cast<DrawCommand::Kind>(below(3)),
                      .filled = below(2) == 0,
                      .drawWidth = static_cast<std::uint16_t>(1 + below(4)),
                      .color = below(kWhite),
                      .fill = below(kWhite),
                      .textLength = below(9)};
  for (float* const place : {&command.x1, &command.y1, &command.x2, &command.y2}) {
    *place = below(4) == 0 ? kOdd[below(8)] : static_cast<float>(below(1200)) - 150;
  }
  if (below(3) == 0) command.y2 = command.y1;
  if (command.kind == DrawCommand::Kind::Circle) command.x2 = std::abs(command.x2) / 4;
  return command;
}

TEST(Painter, APaintedAreaHasThePixelsOfAWholePaintingAndNothingBesideItIsTouched) {
  std::mt19937 random(20261123);
  const auto number = [&](int least, int most) { return std::uniform_int_distribution(least, most)(random); };
  // A text is a dot, which is not beside its corner; what becomes of its pixel depends on what that was.
  const auto drawDot = [](const BitmapView& target, const PixelRect& area, TextView text, int x, int y,
                          Color) {
    const int column = x + 19 - area.left;
    const int row = y - 3 - area.top;
    if (column < 0 || column >= area.width || row < 0 || row >= area.height) return;
    target.row(y - 3)[x + 19] = target.row(y - 3)[x + 19] / 2 + (text.empty() ? 1U : text[0]);
  };
  for (int round = 0; round < 1000; ++round) {
    SCOPED_TRACE(round);
    // Commands at the beginning of both drawings, of one alone, of the other alone, and at the end of both.
    DrawingList before{{}, std::vector(9, u'x')};
    DrawingList after{{}, std::vector(9, round % 8 == 0 ? u'y' : u'x')};
    for (const auto& drawings : {std::vector{&before, &after}, {&before}, {&after}, {&before, &after}}) {
      for (int i = number(0, 4); i > 0; --i) {
        const DrawCommand command = randomCommand(random);
        for (DrawingList* const drawing : drawings) drawing->commands.push_back(command);
      }
    }
    const PixelSize size{number(1, 100), number(1, 100)};
    const PaintScale scale{.pixelsPerTwip = size.width / 900.0, .pixelsPerDrawWidth = number(1, 30) / 10.0};
    const auto paintOn = [&](Canvas& canvas, const DrawingList& drawing, const PixelRect& area) {
      paint(drawing, kWhite, scale, canvas.view(size), drawDot, area);
    };
    Canvas whole;
    paintOn(whole, after, kWholePicture);
    Canvas shown;
    paintOn(shown, before, kWholePicture);
    paintOn(shown, after, changedArea(before, after, scale, size));
    ASSERT_EQ(shown.pixels, whole.pixels);

    const PixelRect area{number(-9, size.width), number(-9, size.height), number(0, 99), number(0, 99)};
    Canvas part;
    paintOn(part, after, area);
    for (int i = 0; i < 103 * 103; ++i) {
      const int x = i % 103 - area.left;
      const int y = i / 103 - area.top;
      const bool inside = x >= 0 && x < area.width && y >= 0 && y < area.height;
      if (!inside) whole.pixels[static_cast<std::size_t>(i)] = kCanary;
    }
    ASSERT_EQ(part.pixels, whole.pixels);
  }
}

TEST(FormLayout, DraggingKeepsTheProportions) {
  Form form;
  form.Width = 200;
  form.Height = 100;
  using enum DraggedEdges;
  const std::tuple<PixelSize, DraggedEdges, double, PixelSize> cases[] = {
      {{300, 999}, Side, 3, {300, 150}},    {{999, 120}, TopOrBottom, 3, {240, 120}},
      {{300, 120}, Corner, 3, {300, 150}},  {{300, 170}, Corner, 3, {340, 170}},
      {{10, 10}, Corner, 3, {100, 50}},     {{5000, 10}, Side, 3, {600, 300}},
      {{300, 150}, Corner, 0.25, {100, 50}}};
  for (const auto& [asked, edges, most, given] : cases) {
    EXPECT_EQ(areaWhileDragging(form, asked, edges, 0.5, most), given)
        << asked.width << " x " << asked.height;
  }
}

TEST(FormLayout, KeysMoveThePointerFromCellToCellWithinThePicture) {
  // Cells in a row, the place, the way from there, and the cell that it leads to. The last ones start off the
  // picture or have odd cells: of no whole twips, larger than the picture.
  const std::tuple<double, PicturePoint, KeyMove, double, double> cases[] = {
      {15, {5000, 5000}, {1, 0}, 8, 7},   {15, {663, 664}, {0, 0}, 0, 1},   {15, {10, 10}, {-1, 0}, 0, 0},
      {15, {9959, 9959}, {0, 1}, 14, 14}, {10, {-3000, 400}, {1, 0}, 1, 0}, {10, {700, 20000}, {0, 0}, 0, 9},
      {7, {9959, 9959}, {1, 1}, 6, 6},    {0.5, {5000, 5000}, {1, 0}, 0, 0}};
  for (const auto& [cells, from, move, column, row] : cases) {
    PictureBox board;
    board.Width = board.Height = 9960;
    board.KeyStep = board.Width / cells;
    const PicturePoint to = movedByKey(board, from, move);
    EXPECT_FLOAT_EQ(to.x, static_cast<float>((column + 0.5) * board.KeyStep)) << from.x;
    EXPECT_FLOAT_EQ(to.y, static_cast<float>((row + 0.5) * board.KeyStep)) << from.y;
  }
}

}  // namespace
}  // namespace fiar
