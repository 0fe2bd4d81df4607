// What is painted into bitmaps: drawings, and pictures in other sizes.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <random>
#include <tuple>
#include <vector>

#include "forms/painter.h"
#include "forms/picture_box.h"
#include "support/allocation_count.h"

namespace fiar {
namespace {

constexpr std::uint32_t kCanary = 0xDEADBEEF;
constexpr PaintScale kPixels = {.pixelsPerTwip = 1, .pixelsPerDrawWidth = 1};
constexpr int kRed = 16;  // where the channels lie in a pixel
constexpr int kGreenChannel = 8;
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

  std::uint32_t& at(int x, int y) { return view.row(y)[x]; }

  bool operator==(const Canvas& other) const { return pixels_ == other.pixels_; }

  /// How many pixels of the picture have been painted, if none beside it has.
  int painted() const {
    return static_cast<int>(std::ssize(pixels_) - std::count(pixels_.begin(), pixels_.end(), kCanary));
  }
  bool isWhole() const { return painted() == view.width * view.height; }

  /// The sum of one channel of the pixels, in whole pixels of its full colour.
  double area(int shift = kRed) {
    double sum = 0;
    for (int y = 0; y < view.height; ++y) {
      for (int x = 0; x < view.width; ++x) sum += static_cast<double>((at(x, y) >> shift) & 0xFF) / 255;
    }
    return sum;
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

TEST(Painter, CirclesCoverTheirExactAreaWithNoSeamAndNoStray) {
  constexpr int kSize = 100;
  using Case = std::tuple<float, float, float, int>;
  for (const auto& [x, y, radius, width] :
       {Case(50, 50, 19.92F, 2), Case(50, 50, 4.5F, 2), Case(50.5F, 50.5F, 20, 3),
        Case(50.3F, 49.8F, 9.96F, 2), Case(51.1F, 50.7F, 2.3F, 1), Case(50.2F, 50.9F, 1.1F, 4)}) {
    const double outer = radius + width / 2.0;
    const double inner = std::max(0.0, radius - width / 2.0);
    for (const bool filled : {true, false}) {
      SCOPED_TRACE(testing::Message() << radius << (filled ? " filled" : ""));
      PictureBox box = boxWith(width, filled ? FillStyle::Solid : FillStyle::Transparent, 0xFF0000);
      box.BackColor = kGreen;
      box.Circle(x, y, radius, 0x0000FF);
      Canvas canvas(kSize, kSize);
      canvas.paint(box);
      const double rim = std::numbers::pi * (outer * outer - inner * inner);
      const double covered = filled ? std::numbers::pi * outer * outer : rim;
      EXPECT_NEAR(canvas.area(kRed), rim, 0.01 * rim + 0.1);
      EXPECT_NEAR(kSize * kSize - canvas.area(kGreenChannel), covered, 0.01 * covered + 0.1);
      for (int row = 0; row < kSize; ++row) {
        for (int column = 0; column < kSize; ++column) {
          const double distance = std::hypot(column + 0.5 - x, row + 0.5 - y);
          const bool betweenEdges = std::abs(distance - inner) > 0.6 && std::abs(distance - outer) > 0.6;
          const bool bare = distance > outer || (distance < inner && !filled);
          const std::uint32_t expected = bare ? 0x00FF00 : distance > inner ? 0xFF0000 : 0x0000FF;
          // Where rim and filling meet, no green shines through.
          const bool inside = filled && distance < outer - 0.6;
          const std::uint32_t mask = betweenEdges ? 0xFFFFFF : inside ? 0x00FF00 : 0;
          ASSERT_EQ(canvas.at(column, row) & mask, expected & mask) << column << ' ' << row;
        }
      }
    }
  }
}

TEST(Painter, GridLinesAreAlikeAtEveryScaleAndSeenInFullAtTheEdges) {
  constexpr float kSide = 9960;
  for (const auto& [scale, lineWidth] :
       {std::pair{1.0, 2}, {1.25, 3}, {1.5, 3}, {2.0, 4}, {3.0, 6}, {0.3, 1}, {1.137, 2}, {0.01, 1}}) {
    for (const int cells : {10, 15, 20, 30}) {
      SCOPED_TRACE(testing::Message() << scale << " x, cells " << cells);
      PictureBox box = boxWith(2);
      for (int i = 0; i <= cells; ++i) {
        const float at = kSide * static_cast<float>(i) / static_cast<float>(cells);
        box.Line(at, 0, at, kSide, kWhite);
        box.Line(0, at, kSide, at, kWhite);
      }
      const int pixels = static_cast<int>(std::lround(kSide / 15 * scale));
      Canvas canvas(pixels, pixels);
      canvas.paint(box, {.pixelsPerTwip = scale / 15, .pixelsPerDrawWidth = scale});
      ASSERT_TRUE(canvas.isWhole());
      ASSERT_EQ(canvas.at(0, 0) & canvas.at(pixels - 1, 0) & canvas.at(pixels - 1, pixels - 1), 0xFFFFFFU);
      if (pixels < cells * 4) continue;  // too small for gaps between the lines

      // A row between two lines crosses all the others.
      std::vector<bool> lit(static_cast<std::size_t>(pixels));
      for (int i = 0; i <= cells; ++i) {
        const double begin = kSide / 15 * scale * i / cells - lineWidth / 2.0;
        const auto first = std::lround(std::clamp(begin, 0.0, static_cast<double>(pixels - lineWidth)));
        std::fill_n(lit.begin() + first, lineWidth, true);
      }
      for (int x = 0; x < pixels; ++x) {
        const std::uint32_t expected = lit[static_cast<std::size_t>(x)] ? 0xFFFFFF : 0;
        ASSERT_EQ(canvas.at(x, lineWidth), expected) << x;
        ASSERT_EQ(canvas.at(lineWidth, x), expected) << x;
      }
    }
  }
}

TEST(Painter, SlantedLinesCoverTheirLengthTimesWidthInEitherDirection) {
  for (const auto& [x1, y1, x2, y2] : {std::array<float, 4>{20, 20, 80, 60},
                                       {80, 60, 20, 20},
                                       {80, 21, 20, 22},
                                       {50, 10, 51.5F, 90},
                                       {30, 80, 70, 40}}) {
    PictureBox box = boxWith(3);
    box.Line(x1, y1, x2, y2, 0xFF);
    const double area = 3 * std::hypot(x2 - x1, y2 - y1) + std::numbers::pi * 1.5 * 1.5;
    EXPECT_NEAR(Canvas(100, 100).paint(box).area(), area, 0.02 * area);
  }
}

TEST(Painter, WhateverTheCoordinatesNothingIsWrittenOutsideTheBitmap) {
  const std::vector<float> values = {-kHuge, -1e9F, -7,    0,         12.5F,      25,
                                     40,     1e9F,  kHuge, kInfinity, -kInfinity, kNaN};
  PictureBox box = boxWith(5, FillStyle::Solid, 0xFF);
  for (const float a : values) {
    for (const float b : values) {
      for (const float c : {-3.0F, 0.01F, 30.0F, 1e9F, kHuge, kInfinity, kNaN}) {
        box.Circle(a, b, c, kWhite);
        box.Line(a, b, c, a, kWhite);
        box.Line(a, b, a, c, kWhite);
        box.Line(a, b, b, c, kWhite);
      }
      box.CurrentX = a;
      box.CurrentY = b;
      box.Print(u"text");
    }
  }
  const TextDrawer near = [](const BitmapView& target, const PixelRect&, TextView, int x, int y, Color) {
    EXPECT_LT(x, target.width);
    EXPECT_LT(y, target.height);
  };
  for (const double scale : {1.0, 1e-9, 9e5, 0.0, -1.0, HUGE_VAL, std::nan("")}) {
    for (const auto& [width, height] : {std::pair{25, 25}, {1, 40}, {40, 1}}) {
      EXPECT_TRUE(Canvas(width, height).paint(box, {scale, scale}, near).isWhole()) << scale;
    }
  }
  paint(box.drawing(), kWhite, kPixels, BitmapView{}, {});
}

TEST(Painter, ShowsWhatReachesThePictureFromOutsideAndLeavesOutWhatIsNotANumber) {
  PictureBox box = boxWith(-4, FillStyle::Solid, 0xFF);  // no width: counts as 1
  box.Circle(kNaN, 10, 5, 0xFF);
  box.Circle(10, 10, kInfinity, 0xFF);
  box.Line(0, 0, kNaN, 20, 0xFF);
  box.Line(-kInfinity, 3, 20, 3, 0xFF);
  EXPECT_EQ(Canvas(20, 20).paint(box).area(), 0);
  box.Line(-kHuge, 3, kHuge, 3, 0xFF);
  EXPECT_EQ(Canvas(20, 20).paint(box).area(), 20);
  box.Circle(-1e6F, 10, 2e6F, 0xFF);
  EXPECT_EQ(Canvas(20, 20).paint(box).area(), 400);
}

TEST(Painter, HandsTextsOverAtTheirPixelsOnTopOfWhatWasDrawnBefore) {
  PictureBox box = boxWith(2, FillStyle::Solid, 0xFF);
  box.ForeColor = 0x123456;
  box.Font.points = 10;
  box.Circle(20, 20, 10, 0xFF);
  box.CurrentX = 40;
  box.CurrentY = 41;
  for (const TextView text : {u"five", u"", u"row"}) box.Print(text);
  std::string seen;
  const TextDrawer drawText = [&](const BitmapView& target, const PixelRect&, TextView text, int x, int y,
                                  Color color) {
    EXPECT_EQ(target.row(10)[10], 0xFF0000U);
    EXPECT_EQ(color, 0x123456U);
    seen += toUtf8(text) + "@" + std::to_string(x) + "," + std::to_string(y) + " ";
  };
  Canvas(60, 300).paint(box, {.pixelsPerTwip = 0.5, .pixelsPerDrawWidth = 1}, drawText);
  // Each starts a line of 12 points, which are 240 twips, at the left edge.
  EXPECT_EQ(seen, "five@20,21 @0,141 row@0,261 ");
  box.Cls();
  EXPECT_EQ(box.CurrentY, 0);
}

using Item = std::mt19937::result_type;
constexpr float kSide = 900;  // of the picture that random items are drawn on, in twips

/// Draws a line, a circle or a text that only `item` decides on, in, about and across the picture's edges.
void drawItem(PictureBox& box, Item item) {
  std::mt19937 random(item);
  const auto place = [&] {
    constexpr std::array kEdges{0.0F, kSide};
    return random() % 4 == 0 ? kEdges[random() % 2] : static_cast<float>(random() % 1200) - 150;
  };
  const float x = place();
  const float y = place();
  box.DrawWidth = static_cast<int>(1 + random() % 4);
  box.FillStyle = static_cast<FillStyle>(random() % 2);
  box.FillColor = static_cast<Color>(random());
  const auto kind = random() % 10;
  if (kind < 2)
    box.Line(x, y, place(), y, kWhite);
  else if (kind < 4)
    box.Line(x, y, x, place(), kWhite);
  else if (kind < 6)
    box.Line(x, y, place(), place(), kWhite);
  else if (kind < 9)
    box.Circle(x, y, place() / 4, kGreen);
  else {
    box.CurrentX = x;
    box.CurrentY = y;
    box.Print(u"text");
  }
}

PictureBox boxOf(const std::vector<Item>& items) {
  PictureBox box;
  for (const Item item : items) drawItem(box, item);
  return box;
}

/// Changes some items: one more, one less, another one, other ones throughout, or none.
std::vector<Item> changed(std::vector<Item> items, std::mt19937& random) {
  const auto place = items.begin() + static_cast<std::ptrdiff_t>(random() % items.size());
  switch (random() % 5) {
    case 0:
      items.insert(place, random());
      break;
    case 1:
      items.erase(place);
      break;
    case 2:
      *place = random();
      break;
    case 3:
      std::generate(items.begin(), items.end(), std::ref(random));
      break;
    default:
      break;
  }
  return items;
}

/// A text whose pixels depend on what is below, about its corner.
void drawBlot(const BitmapView& target, const PixelRect& area, TextView /*text*/, int x, int y, Color color) {
  for (int row = std::max(area.top, y - 3); row < std::min(area.top + area.height, y + 9); ++row) {
    for (int column = std::max(area.left, x - 3); column < std::min(area.left + area.width, x + 20);
         ++column) {
      target.row(row)[column] = (target.row(row)[column] * 3 + color) & 0x00FFFFFF;
    }
  }
}

TEST(Painter, APaintedAreaHasThePixelsOfAWholePainting) {
  std::mt19937 random(20261123);
  for (int round = 0; round < 1000; ++round) {
    SCOPED_TRACE(round);
    std::vector<Item> items(1 + random() % 12);
    std::generate(items.begin(), items.end(), std::ref(random));
    const PictureBox before = boxOf(items);
    const PictureBox after = boxOf(changed(items, random));
    const double pixelsPerTwip = static_cast<double>(5 + random() % 100) / kSide;
    const PaintScale scale{.pixelsPerTwip = pixelsPerTwip, .pixelsPerDrawWidth = 15 * pixelsPerTwip};
    const int width = static_cast<int>(std::lround(pixelsPerTwip * kSide));
    const int height = 1 + static_cast<int>(random() % 100);

    Canvas whole(width, height);
    whole.paint(after, scale, drawBlot);
    const PixelRect area = changedArea(before.drawing(), after.drawing(), scale, {width, height});
    Canvas shown(width, height);
    shown.paint(before, scale, drawBlot).paint(after, scale, drawBlot, area);
    ASSERT_TRUE(shown == whole);

    const auto number = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const PixelRect any{number(width + 9) - 9, number(height + 9) - 9, number(width), number(height)};
    Canvas part(width, height);
    part.paint(after, scale, drawBlot, any);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const bool inside =
            x >= any.left && x < any.left + any.width && y >= any.top && y < any.top + any.height;
        ASSERT_EQ(part.at(x, y), inside ? whole.at(x, y) : kCanary) << x << ' ' << y;
      }
    }
  }
}

TEST(Painter, ARingThatMovesByACellTouchesTwoCellsAndAllocatesNothing) {
  constexpr float kCell = 332;
  const auto boardWithRing = [](float column) {
    PictureBox box = boxWith(2, FillStyle::Solid, 0xFF);
    for (int i = 0; i < 900; ++i) {
      const auto cell = [](int number) { return (static_cast<float>(number) + 0.5F) * kCell; };
      box.Circle(cell(i / 30), cell(i % 30), 0.45F * kCell, kWhite);
    }
    box.FillStyle = FillStyle::Transparent;
    box.Circle((column + 0.5F) * kCell, 7.5F * kCell, 0.45F * kCell, kGreen);
    return box;
  };
  const PictureBox before = boardWithRing(7);
  const PictureBox after = boardWithRing(8);
  for (const int side : {664, 1992}) {
    Canvas canvas(side, side);
    const PaintScale scale{.pixelsPerTwip = side / 9960.0, .pixelsPerDrawWidth = side / 664.0};
    const std::size_t allocations = test::allocationCount();
    const PixelRect area = changedArea(before.drawing(), after.drawing(), scale, {side, side});
    canvas.paint(after, scale, {}, area);
    EXPECT_EQ(test::allocationCount(), allocations);
    // A ring's soft edge may reach a pixel beyond its cell.
    const double cell = side / 30.0;
    EXPECT_LE(canvas.painted(), (2 * cell + 1) * (cell + 1));
    EXPECT_GT(canvas.painted(), cell * cell);
  }
}

}  // namespace
}  // namespace fiar
