#include "forms/painter.h"

#include <algorithm>
#include <cmath>

namespace fiar {
namespace {

/// Pixels [begin, end) of a row or column.
struct Span {
  int begin = 0;
  int end = 0;
};

/// A point or distance in pixels; pixel (x, y) covers the square from (x, y) to (x + 1, y + 1).
struct Point {
  double x = 0;
  double y = 0;
};

// Beyond this a coordinate is as good as infinite, and whole numbers still have room to be reckoned with.
constexpr double kFarAway = 1e6;
// The weights of a blend run from 0, all below, to this, all above.
constexpr int kFullWeight = 256;

std::uint32_t pixelOf(Color color) {
  return (std::uint32_t{redOf(color)} << 16) | (std::uint32_t{greenOf(color)} << 8) | blueOf(color);
}

/// The number of [0, limit] that is nearest to the value; 0 for one that is not a number.
double within(double value, double limit) {
  return std::min(std::max(0.0, value), limit);
}

/// Rounds down and stays within [0, limit].
int floorWithin(double value, int limit) {
  return static_cast<int>(within(value, limit));
}

/// The pixels of a row whose centres lie less than `reach` from `middle`. Whatever the numbers, the span of a
/// smaller reach lies inside the span of a larger one.
Span centredSpan(double middle, double reach, int limit) {
  return {floorWithin(middle - reach + 0.5, limit), floorWithin(middle + reach + 0.5, limit)};
}

/// Mixes two pixels: red and blue in one multiplication, green in another. Plain, without gamma correction,
/// which would make dark rims look thin and ragged on the light board.
std::uint32_t mix(std::uint32_t under, std::uint32_t over, std::uint32_t weight) {
  constexpr std::uint32_t kRedBlue = 0x00FF00FF;
  constexpr std::uint32_t kGreenOnly = 0x0000FF00;
  const std::uint32_t rest = kFullWeight - weight;
  const std::uint32_t redBlue = (under & kRedBlue) * rest + (over & kRedBlue) * weight + 0x00800080;
  const std::uint32_t green = (under & kGreenOnly) * rest + (over & kGreenOnly) * weight + 0x00008000;
  return ((redBlue >> 8) & kRedBlue) | ((green >> 8) & kGreenOnly);
}

/// A weight to blend with; anything outside its range counts as the nearest end of it.
std::uint32_t toWeight(double weight) {
  return static_cast<std::uint32_t>(static_cast<int>(within(weight, kFullWeight)));
}

void fillSpan(std::uint32_t* row, int begin, int end, std::uint32_t pixel) {
  for (int x = begin; x < end; ++x) row[x] = pixel;
}

/// The soft edge of a disc: how much of a pixel lies inside, by the square of its distance from the centre.
/// Runs from all to nothing over the pixel's width about the edge; linear in the square, so that no root is
/// taken for a pixel and the weights of a disc add up to its exact area.
struct DiscEdge {
  double insideSquared = 0;   ///< nearer than this: inside altogether (negative: no pixel is)
  double outsideSquared = 0;  ///< farther than this: outside altogether
  double slope = 0;
  double weightAtCentre = 0;

  explicit DiscEdge(double radius)
      : insideSquared(radius * radius - radius),
        outsideSquared(radius * radius + radius),
        slope(radius > 0 ? kFullWeight / (2 * radius) : 0),
        weightAtCentre(outsideSquared * slope + 0.5) {}

  std::uint32_t weight(double distanceSquared) const {
    return toWeight(weightAtCentre - distanceSquared * slope);
  }
};

double rootOrZero(double square) {
  return square > 0 ? std::sqrt(square) : 0;
}

/// A rim about the centre, with its inside filled or left as it is. Where the rim meets the filling the two
/// are mixed with each other alone, so that nothing shines through between them.
class CirclePainter {
public:
  /// `radius` is that of the rim's middle; `rimWidth` is at least 1 pixel, so that no pixel has both edges in
  /// it.
  CirclePainter(Point centre, double radius, double rimWidth)
      : centre_(centre), outer_(radius + rimWidth / 2), inner_(std::max(0.0, radius - rimWidth / 2)) {}

  void paint(const BitmapView& target, std::uint32_t rim, bool filled, std::uint32_t fill) const {
    const Span rows = centredSpan(centre_.y, rootOrZero(outer_.outsideSquared), target.height);
    for (int y = rows.begin; y < rows.end; ++y) paintRow(target, y, rim, filled, fill);
  }

private:
  void paintRow(const BitmapView& target, int y, std::uint32_t rim, bool filled, std::uint32_t fill) const {
    const double dy = y + 0.5 - centre_.y;
    const double dySquared = dy * dy;
    const auto span = [&](double reachSquared) {
      return centredSpan(centre_.x, rootOrZero(reachSquared - dySquared), target.width);
    };
    // From outside to inside, each within the one before: touched at all, all rim or inside, not all rim, all
    // inside.
    const Span touched = span(outer_.outsideSquared);
    const Span opaque = span(outer_.insideSquared);
    const Span within = span(inner_.outsideSquared);
    const Span inside = span(inner_.insideSquared);

    std::uint32_t* row = target.row(y);
    const auto squaredDistance = [&](int x) {
      const double dx = x + 0.5 - centre_.x;
      return dx * dx + dySquared;
    };
    const auto outerEdge = [&](int begin, int end) {
      for (int x = begin; x < end; ++x) row[x] = mix(row[x], rim, outer_.weight(squaredDistance(x)));
    };
    const auto innerEdge = [&](int begin, int end) {
      for (int x = begin; x < end; ++x) {
        row[x] = mix(rim, filled ? fill : row[x], inner_.weight(squaredDistance(x)));
      }
    };
    outerEdge(touched.begin, opaque.begin);
    fillSpan(row, opaque.begin, within.begin, rim);
    innerEdge(within.begin, inside.begin);
    if (filled) fillSpan(row, inside.begin, inside.end, fill);
    innerEdge(inside.end, within.end);
    fillSpan(row, within.end, opaque.end, rim);
    outerEdge(opaque.end, touched.end);
  }

  Point centre_;
  DiscEdge outer_;
  DiscEdge inner_;
};

/// The whole pixels that a line about `position` covers; a line on the picture's edge is moved inside.
Span lineAcross(double position, int width, int limit) {
  const double near = std::clamp(position, -kFarAway, kFarAway);
  int begin = static_cast<int>(std::floor(near - width / 2.0 + 0.5));
  if (near >= -0.5 && near <= limit + 0.5) begin = std::clamp(begin, 0, std::max(0, limit - width));
  return {begin, begin + width};
}

void fillRectangle(const BitmapView& target, Span columns, Span rows, std::uint32_t pixel) {
  const int begin = std::max(columns.begin, 0);
  const int end = std::min(columns.end, target.width);
  const int bottom = std::min(rows.end, target.height);
  for (int y = std::max(rows.begin, 0); y < bottom; ++y) fillSpan(target.row(y), begin, end, pixel);
}

/// A line along a row or column: whole pixels only. Its ends reach as far as a line across them would, so
/// that corners are square.
void paintStraightLine(const BitmapView& target, Point from, Point to, double width, std::uint32_t pixel) {
  const int wholeWidth = static_cast<int>(std::lround(width));
  const auto between = [&](double a, double b, int limit) {
    return Span{lineAcross(std::min(a, b), wholeWidth, limit).begin,
                lineAcross(std::max(a, b), wholeWidth, limit).end};
  };
  fillRectangle(target, between(from.x, to.x, target.width), between(from.y, to.y, target.height), pixel);
}

/// A line in any other direction, with round ends.
void paintSlantedLine(const BitmapView& target, Point from, Point to, double width, std::uint32_t pixel) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  const Point along = {(to.x - from.x) / length, (to.y - from.y) / length};
  const double reach = width / 2 + 0.5;
  const auto grown = [&](double a, double b, int limit) {
    return Span{floorWithin(std::min(a, b) - reach, limit), floorWithin(std::max(a, b) + reach + 1, limit)};
  };
  const Span rows = grown(from.y, to.y, target.height);
  const Span columns = grown(from.x, to.x, target.width);
  for (int y = rows.begin; y < rows.end; ++y) {
    std::uint32_t* row = target.row(y);
    const double dy = y + 0.5 - from.y;
    const double middle = from.x + dy * along.x / along.y;
    const Span near = centredSpan(middle, reach / std::abs(along.y) + 1, target.width);
    for (int x = std::max(near.begin, columns.begin); x < std::min(near.end, columns.end); ++x) {
      const double dx = x + 0.5 - from.x;
      const double across = dx * along.y - dy * along.x;
      const double travelled = dx * along.x + dy * along.y;
      const double beyond = std::max({0.0, -travelled, travelled - length});
      const double coverage = reach - std::sqrt(across * across + beyond * beyond);
      row[x] = mix(row[x], pixel, toWeight(coverage * kFullWeight));
    }
  }
}

bool isSound(const DrawCommand& command) {
  return std::isfinite(command.x1) && std::isfinite(command.y1) && std::isfinite(command.x2) &&
         std::isfinite(command.y2);
}

/// Paints commands one by one onto a bitmap that is not empty.
class Painter {
public:
  Painter(const PaintScale& scale, const BitmapView& target) : scale_(scale), target_(target) {}

  void paintLine(const DrawCommand& command) const {
    const Point from = toPixels(command.x1, command.y1);
    const Point to = toPixels(command.x2, command.y2);
    const auto paintAs = from.x == to.x || from.y == to.y ? paintStraightLine : paintSlantedLine;
    paintAs(target_, from, to, lineWidth(command), pixelOf(command.color));
  }

  void paintCircle(const DrawCommand& command) const {
    const double radius = command.x2 * scale_.pixelsPerTwip;
    if (!(radius > 0)) return;
    CirclePainter(toPixels(command.x1, command.y1), radius, lineWidth(command))
        .paint(target_, pixelOf(command.color), command.filled, pixelOf(command.fill));
  }

  void paintText(const DrawCommand& command, TextView text, const TextDrawer& drawText) const {
    const Point corner = toPixels(command.x1, command.y1);
    if (!(corner.x > -kFarAway && corner.x < target_.width)) return;
    if (!(corner.y > -kFarAway && corner.y < target_.height)) return;
    drawText(target_, text, static_cast<int>(std::lround(corner.x)), static_cast<int>(std::lround(corner.y)),
             command.color);
  }

private:
  Point toPixels(float x, float y) const { return {x * scale_.pixelsPerTwip, y * scale_.pixelsPerTwip}; }

  double lineWidth(const DrawCommand& command) const {
    return std::clamp(command.drawWidth * scale_.pixelsPerDrawWidth, 1.0, kFarAway);
  }

  const PaintScale& scale_;
  const BitmapView& target_;
};

bool isUsable(double scale) {
  return scale > 0 && scale < kFarAway;
}

}  // namespace

void paint(const DrawingList& drawing, Color backColor, const PaintScale& scale, const BitmapView& target,
           const TextDrawer& drawText) {
  if (target.pixels == nullptr || target.width <= 0 || target.height <= 0) return;
  const std::uint32_t background = pixelOf(backColor);
  for (int y = 0; y < target.height; ++y) fillSpan(target.row(y), 0, target.width, background);
  if (!isUsable(scale.pixelsPerTwip) || !isUsable(scale.pixelsPerDrawWidth)) return;

  const Painter painter(scale, target);
  for (const DrawCommand& command : drawing.commands) {
    if (!isSound(command)) continue;
    switch (command.kind) {
      case DrawCommand::Kind::Line:
        painter.paintLine(command);
        break;
      case DrawCommand::Kind::Circle:
        painter.paintCircle(command);
        break;
      case DrawCommand::Kind::Print:
        if (drawText) painter.paintText(command, drawing.text(command), drawText);
        break;
    }
  }
}

}  // namespace fiar
