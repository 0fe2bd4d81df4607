#include "forms/painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "forms/picture_box.h"
#include "support/allocation_count.h"

namespace fiar {
namespace {

constexpr std::uint32_t kCanary = 0xDEADBEEF;
constexpr PaintScale kPixels = {.pixelsPerTwip = 1, .pixelsPerDrawWidth = 1};
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kHuge = std::numeric_limits<float>::max();

/// A bitmap whose rows are longer than the picture, with room around it that must stay as it is.
class Canvas {
public:
  Canvas(int width, int height)
      : stride_(width + 2 * kMargin),
        pixels_(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height + 2 * kMargin), kCanary),
        view{&pixels_[kMargin * (static_cast<std::size_t>(stride_) + 1)], width, height, stride_} {}

  Canvas& paint(const PictureBox& box, const PaintScale& scale = kPixels, const TextDrawer& drawText = {},
                const PixelRect& area = kWholePicture) {
    fiar::paint(box.drawing(), box.BackColor, scale, view, drawText, area);
    return *this;
  }

  bool operator==(const Canvas& other) const { return pixels_ == other.pixels_; }
  std::uint32_t at(int x, int y) const { return view.row(y)[x]; }
  /// How many pixels have been painted.
  auto painted() const { return std::ssize(pixels_) - std::count(pixels_.begin(), pixels_.end(), kCanary); }
  /// The sum of the pixels' red, in pixels that are all red.
  double redArea() const {
    double sum = 0;
    for (int i = 0; i < view.width * view.height; ++i)
      sum += (at(i % view.width, i / view.width) >> 16) & 0xFF;
    return sum / 0xFF;
  }

private:
  static constexpr int kMargin = 3;
  int stride_;
  std::vector<std::uint32_t> pixels_;

public:
  BitmapView view;
};

PictureBox boxWith(int drawWidth, FillStyle style = FillStyle::Transparent, Color fill = kBlack) {
  PictureBox box;
  box.BackColor = kBlack;
  box.DrawWidth = drawWidth;
  box.FillStyle = style;
  box.FillColor = fill;
  return box;
}

TEST(Painter, CirclesHaveTheirExactAreaAndSoftEdgesAlone) {
  for (const auto& [x, y, radius, width] : {std::array{50.0F, 50.0F, 19.92F, 2.0F},
                                            {50.5F, 50.5F, 20, 3},
                                            {50.3F, 49.8F, 9.96F, 2},
                                            {51.1F, 50.7F, 2.3F, 1},
                                            {50.2F, 50.9F, 1.1F, 4}}) {
    const double outer = radius + width / 2;
    const double inner = std::max(0.0F, radius - width / 2);
    for (const bool filled : {true, false}) {
      SCOPED_TRACE(testing::Message() << radius << (filled ? " filled" : ""));
      const auto style = filled ? FillStyle::Solid : FillStyle::Transparent;
      PictureBox box = boxWith(static_cast<int>(width), style, 0xFF0000);
      box.BackColor = kGreen;
      box.Circle(x, y, radius, 0x0000FF);
      Canvas canvas(100, 100);
      canvas.paint(box);
      const double rim = std::numbers::pi * (outer * outer - inner * inner);
      EXPECT_NEAR(canvas.redArea(), rim, 0.01 * rim + 0.1);
      for (int i = 0; i < 100 * 100; ++i) {
        const int column = i % 100;
        const int row = i / 100;
        const double distance = std::hypot(column + 0.5 - x, row + 0.5 - y);
        const bool betweenEdges = std::abs(distance - inner) > 0.6 && std::abs(distance - outer) > 0.6;
        const bool bare = distance > outer || (distance < inner && !filled);
        const std::uint32_t expected = bare ? 0x00FF00 : distance > inner ? 0xFF0000 : 0x0000FF;
        // No background shines through where the rim and the filling meet.
        const bool inside = filled && distance < outer - 0.6;
        const std::uint32_t mask = betweenEdges ? 0xFFFFFF : inside ? 0x00FF00 : 0;
        ASSERT_EQ(canvas.at(column, row) & mask, expected & mask) << i;
      }
    }
  }
}

TEST(Painter, GridLinesAreAlikeAtEveryScaleAndSeenInFullAtTheEdges) {
  constexpr float kLength = 9960;
  for (const auto& [scale, lineWidth] :
       {std::pair{1.0, 2}, {1.25, 3}, {1.5, 3}, {2.0, 4}, {3.0, 6}, {0.3, 1}, {1.137, 2}}) {
    for (const int cells : {10, 30}) {
      SCOPED_TRACE(testing::Message() << scale << " x, cells " << cells);
      PictureBox box = boxWith(2);
      const int pixels = static_cast<int>(std::lround(kLength / 15 * scale));
      // A row between two lines crosses all the others.
      std::vector<bool> lit(static_cast<std::size_t>(pixels));
      for (int i = 0; i <= cells; ++i) {
        const float at = kLength * static_cast<float>(i) / static_cast<float>(cells);
        box.Line(at, 0, at, kLength, kWhite);
        box.Line(0, at, kLength, at, kWhite);
        const double begin = kLength / 15 * scale * i / cells - lineWidth / 2.0;
        std::fill_n(lit.begin() + std::lround(std::clamp<double>(begin, 0, pixels - lineWidth)), lineWidth,
                    true);
      }
      Canvas canvas(pixels, pixels);
      canvas.paint(box, {.pixelsPerTwip = scale / 15, .pixelsPerDrawWidth = scale});
      for (int i = 0; i < pixels; ++i) {
        const std::uint32_t expected = lit[static_cast<std::size_t>(i)] ? 0xFFFFFF : 0;
        ASSERT_EQ(canvas.at(i, lineWidth), expected) << i;
        ASSERT_EQ(canvas.at(lineWidth, i), expected) << i;
        ASSERT_EQ(canvas.at(i, 0) & canvas.at(i, pixels - 1), 0xFFFFFFU) << i;
      }
    }
  }
}

TEST(Painter, LinesCoverTheirLengthTimesWidthAndCirclesReachInFromOutside) {
  constexpr double kEnds = std::numbers::pi * 1.5 * 1.5;
  const auto length = [](double dx, double dy) { return std::hypot(dx, dy) * 3 + kEnds; };
  using Case = std::pair<std::array<float, 4>, double>;
  for (const auto& [line, area] :
       {Case{{20, 20, 80, 60}, length(60, 40)}, Case{{80, 60, 20, 20}, length(60, 40)},
        Case{{140, 21, 20, 22}, length(80, 0) - kEnds / 2}, Case{{50, 10, 51.5F, 90}, length(1.5, 80)},
        Case{{-kHuge, 30, kHuge, 30}, 300}, Case{{0, 0, kNaN, 20}, 0}, Case{{-kInfinity, 3, 20, 3}, 0}}) {
    PictureBox box = boxWith(3);
    box.Line(line[0], line[1], line[2], line[3], 0xFF);
    EXPECT_NEAR(Canvas(100, 100).paint(box).redArea(), area, 0.8) << line[0] << ' ' << line[3];
  }
  PictureBox box = boxWith(-4, FillStyle::Solid, 0xFF);  // no width: counts as 1
  box.Circle(kNaN, 10, 5, 0xFF);
  box.Circle(10, 10, kInfinity, 0xFF);
  EXPECT_EQ(Canvas(20, 20).paint(box).redArea(), 0);
  box.Circle(-1e6F, 10, 2e6F, 0xFF);
  EXPECT_EQ(Canvas(20, 20).paint(box).redArea(), 400);
  for (const double scale : {0.0, -1.0, 1e6, HUGE_VAL, std::nan("")}) {
    EXPECT_EQ(Canvas(20, 20).paint(box, {.pixelsPerTwip = scale}).redArea(), 0) << scale;
    EXPECT_EQ(Canvas(20, 20).paint(box, {.pixelsPerDrawWidth = scale}).redArea(), 0) << scale;
  }
}

TEST(Painter, HandsTextsOverAtTheirPixelsOnTopOfWhatWasDrawnBefore) {
  PictureBox box = boxWith(2, FillStyle::Solid, 0xFF);
  box.ForeColor = 0x123456;
  box.Font.points = 10;
  box.Circle(20, 20, 10, 0xFF);
  box.CurrentX = 40;
  box.CurrentY = 41;
  for (const TextView text : {u"five", u"", u"row"}) box.Print(text);
  box.CurrentX = kHuge;
  box.CurrentY = 0;
  box.Print(u"too far away");
  std::string seen;
  Canvas(60, 300).paint(
      box, {.pixelsPerTwip = 0.5, .pixelsPerDrawWidth = 1},
      [&](const BitmapView& target, const PixelRect& area, TextView text, int x, int y, Color color) {
        EXPECT_EQ(target.row(10)[10], 0xFF0000U);
        EXPECT_EQ(area, (PixelRect{0, 0, 60, 300}));
        EXPECT_EQ(color, 0x123456U);
        seen +=
            std::string(text.begin(), text.end()) + "@" + std::to_string(x) + "," + std::to_string(y) + " ";
      });
  // Each starts a line of 12 points, which are 240 twips, at the left edge.
  EXPECT_EQ(seen, "five@20,21 @0,141 row@0,261 ");

  PictureBox five;
  PictureBox six;
  five.Print(u"5");
  six.Print(u"6");
  EXPECT_EQ(changedArea(five.drawing(), six.drawing(), kPixels, {9, 9}), (PixelRect{0, 0, 9, 9}));
}

using Item = std::mt19937::result_type;
constexpr float kSide = 900;  // of the picture that random items are drawn on, in twips

/// Draws a line, a circle or a text that only `item` decides on, anywhere or on the picture's edges.
void drawItem(PictureBox& box, Item item) {
  constexpr std::array kOdd{0.0F, 0.0F, kSide, kSide, -1e9F, kHuge, kInfinity, kNaN};
  std::mt19937 random(item);
  const auto place = [&] {
    return random() % 4 == 0 ? kOdd[random() % kOdd.size()] : static_cast<float>(random() % 1200) - 150;
  };
  const float x = place();
  const float y = place();
  box.DrawWidth = static_cast<int>(1 + random() % 4);
  box.FillStyle = static_cast<FillStyle>(random() % 2);
  box.FillColor = static_cast<Color>(random());
  const auto kind = random() % 10;
  if (kind < 2) box.Line(x, y, place(), y, kWhite);
  if (kind == 2 || kind == 3) box.Line(x, y, x, place(), kWhite);
  if (kind == 4 || kind == 5) box.Line(x, y, place(), place(), kWhite);
  if (kind > 5 && kind < 9) box.Circle(x, y, place() / 4, kGreen);
  if (kind < 9) return;
  box.CurrentX = x;
  box.CurrentY = y;
  box.Print(TextView(u"some text").substr(random() % 8));
}

PictureBox boxOf(const std::vector<Item>& items) {
  PictureBox box;
  for (const Item item : items) drawItem(box, item);
  return box;
}

/// Draws about the corner of a text; what its pixels become depends on what they were and on the text.
void drawBlot(const BitmapView& target, const PixelRect& area, TextView text, int x, int y, Color color) {
  for (int row = std::max(area.top, y - 3); row < std::min(area.top + area.height, y + 9); ++row) {
    for (int column = std::max(area.left, x - 3); column < std::min(area.left + area.width, x + 20);
         ++column) {
      target.row(row)[column] = (target.row(row)[column] * 3 + color + text.size()) & 0x00FFFFFF;
    }
  }
}

TEST(Painter, APaintedAreaHasThePixelsOfAWholePaintingAndNothingBesideItIsTouched) {
  std::mt19937 random(20261123);
  const auto number = [&](int least, int most) {
    return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
  };
  for (int round = 0; round < 1000; ++round) {
    SCOPED_TRACE(round);
    // Some items in the middle make room for some others.
    std::vector<Item> items(random() % 12);
    std::generate(items.begin(), items.end(), std::ref(random));
    const PictureBox before = boxOf(items);
    const auto begin = items.begin() + number(0, static_cast<int>(items.size()));
    const auto end = begin + number(0, static_cast<int>(items.end() - begin));
    std::vector<Item> others(random() % 4);
    std::generate(others.begin(), others.end(), std::ref(random));
    items.insert(items.erase(begin, end), others.begin(), others.end());
    const PictureBox after = boxOf(items);
    const int width = number(1, 100);
    const int height = number(1, 100);
    PaintScale scale{.pixelsPerTwip = width / double{kSide}, .pixelsPerDrawWidth = number(1, 30) / 10.0};

    Canvas whole(width, height);
    whole.paint(after, scale, drawBlot);
    ASSERT_EQ(whole.painted(), width * height);
    Canvas shown(width, height);
    shown.paint(before, scale, drawBlot);
    shown.paint(after, scale, drawBlot,
                changedArea(before.drawing(), after.drawing(), scale, {width, height}));
    ASSERT_TRUE(shown == whole);

    const PixelRect area{number(-9, width), number(-9, height), number(0, width), number(0, height)};
    Canvas part(width, height);
    part.paint(after, scale, drawBlot, area);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const bool inside =
            x >= area.left && x - area.left < area.width && y >= area.top && y - area.top < area.height;
        ASSERT_EQ(part.at(x, y), inside ? whole.at(x, y) : kCanary) << x << ' ' << y;
      }
    }
  }
}

TEST(Painter, ARingThatMovesByACellTouchesTwoCellsAndAllocatesNothing) {
  constexpr float kCell = 332;
  const auto centre = [](int cell) { return (static_cast<float>(cell) + 0.5F) * kCell; };
  const auto boardWithRing = [&](int column) {
    PictureBox box = boxWith(2, FillStyle::Solid, 0xFF);
    for (int i = 0; i < 900; ++i) box.Circle(centre(i / 30), centre(i % 30), 0.45F * kCell, kWhite);
    box.FillStyle = FillStyle::Transparent;
    box.Circle(centre(column), centre(7), 0.45F * kCell, kGreen);
    return box;
  };
  const PictureBox before = boardWithRing(7);
  const PictureBox after = boardWithRing(8);
  for (const int side : {664, 1992}) {
    Canvas canvas(side, side);
    const PaintScale scale{.pixelsPerTwip = side / 9960.0, .pixelsPerDrawWidth = side / 664.0};
    const std::size_t allocations = test::allocationCount();
    canvas.paint(after, scale, {}, changedArea(before.drawing(), after.drawing(), scale, {side, side}));
    EXPECT_EQ(test::allocationCount(), allocations);
    // A ring's soft edge may reach a pixel beyond its cell.
    const double cell = side / 30.0;
    EXPECT_LE(static_cast<double>(canvas.painted()), (2 * cell + 1) * (cell + 1));
    EXPECT_GT(static_cast<double>(canvas.painted()), cell * cell);
  }
}

}  // namespace
}  // namespace fiar
