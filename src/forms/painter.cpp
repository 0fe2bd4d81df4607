#include "forms/painter.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace fiar {
namespace {

/// Pixels [begin, end) of a row or column.
struct Span {
  int begin = 0;
  int end = 0;
};

/// The pixels where some columns and some rows meet.
struct Area {
  Span columns;
  Span rows;

  bool isEmpty() const { return columns.begin >= columns.end || rows.begin >= rows.end; }
};

/// A point or distance in pixels; pixel (x, y) covers the square from (x, y) to (x + 1, y + 1).
struct Point {
  double x = 0;
  double y = 0;
};

// Beyond this a coordinate is as good as infinite; up to it there is room to compute in whole numbers.
constexpr double kFarAway = 1e6;
// The weights of a blend run from 0, all below, to this, all above.
constexpr std::uint32_t kFullWeight = 256;

Span overlap(Span a, Span b) {
  return {std::max(a.begin, b.begin), std::min(a.end, b.end)};
}

Area overlap(const Area& a, const Area& b) {
  return {overlap(a.columns, b.columns), overlap(a.rows, b.rows)};
}

Span hull(Span a, Span b) {
  return {std::min(a.begin, b.begin), std::max(a.end, b.end)};
}

/// The smallest area that contains both.
Area hull(const Area& a, const Area& b) {
  if (a.isEmpty()) return b;
  if (b.isEmpty()) return a;
  return {hull(a.columns, b.columns), hull(a.rows, b.rows)};
}

Area toArea(const PixelRect& rect) {
  return {{rect.left, rect.left + rect.width}, {rect.top, rect.top + rect.height}};
}

PixelRect toRect(const Area& area) {
  if (area.isEmpty()) return {};
  return {.left = area.columns.begin,
          .top = area.rows.begin,
          .width = area.columns.end - area.columns.begin,
          .height = area.rows.end - area.rows.begin};
}

/// A colour as bitmaps hold it: with red and blue swapped.
std::uint32_t pixelOf(Color color) {
  return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

/// The number of [least, most] that is nearest to the value; the least for one that is not a number.
double limited(double value, double least, double most) {
  return std::min(std::max(least, value), most);
}

/// Rounds down and stays within the limits, which are not negative.
int floorWithin(double value, Span limits) {
  return static_cast<int>(limited(value, limits.begin, limits.end));
}

/// The pixels within the limits whose centres lie less than `reach` from `middle`. Whatever the numbers, the
/// span of a smaller reach lies inside the span of a larger one.
Span centredSpan(double middle, double reach, Span limits) {
  return {floorWithin(middle - reach + 0.5, limits), floorWithin(middle + reach + 0.5, limits)};
}

/// Mixes two pixels: red and blue in one multiplication, green in another. Plain, without gamma correction,
/// which would make dark rims look thin and ragged on the light board.
std::uint32_t mix(std::uint32_t under, std::uint32_t over, std::uint32_t weight) {
  // A difference below zero wraps around, and the sum wraps back.
  const auto mixed = [&](std::uint32_t channels, std::uint32_t half) {
    const std::uint32_t difference = (over & channels) - (under & channels);
    return (((under & channels) * kFullWeight + difference * weight + half) >> 8) & channels;
  };
  return mixed(0x00FF00FF, 0x00800080) | mixed(0x0000FF00, 0x00008000);
}

/// A weight to blend with; anything outside its range counts as the nearest end of it.
std::uint32_t toWeight(double weight) {
  return static_cast<std::uint32_t>(static_cast<int>(limited(weight, 0, kFullWeight)));
}

void fillSpan(std::uint32_t* row, int begin, int end, std::uint32_t pixel) {
  for (int x = begin; x < end; ++x) row[x] = pixel;
}

void fillArea(const BitmapView& target, const Area& area, std::uint32_t pixel) {
  for (int y = area.rows.begin; y < area.rows.end; ++y) {
    fillSpan(target.row(y), area.columns.begin, area.columns.end, pixel);
  }
}

/// The soft edge of a disc: how much of a pixel lies inside, by the square of its distance from the centre.
/// Falls from all to nothing over the pixel's width about the edge; linear in the square, so that no root is
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

/// A rim about the centre, with its inside filled or left as it is: the rim is an outer disc without an inner
/// one. Where the rim meets the filling the two are mixed with each other alone, so that nothing shines
/// through between them.
class CirclePainter {
public:
  /// `radius` is that of the rim's middle; `rimWidth` is at least 1 pixel, so that no pixel has both edges in
  /// it.
  CirclePainter(Point centre, double radius, double rimWidth)
      : centre_(centre), outer_(radius + rimWidth / 2), inner_(std::max(0.0, radius - rimWidth / 2)) {}

  void paint(const BitmapView& target, const Area& area, std::uint32_t rim, bool filled,
             std::uint32_t fill) const {
    for (int y = area.rows.begin; y < area.rows.end; ++y) {
      paintRow(target.row(y), y, area.columns, rim, filled, fill);
    }
  }

private:
  void paintRow(std::uint32_t* row, int y, Span columns, std::uint32_t rim, bool filled,
                std::uint32_t fill) const {
    const double dy = y + 0.5 - centre_.y;
    const double dySquared = dy * dy;
    const auto span = [&](double reachSquared) {
      return centredSpan(centre_.x, rootOrZero(reachSquared - dySquared), columns);
    };
    // Each lies within the one before.
    const Span outerTouched = span(outer_.outsideSquared);
    const Span outerFull = span(outer_.insideSquared);
    const Span innerTouched = span(inner_.outsideSquared);
    const Span innerFull = span(inner_.insideSquared);

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
    outerEdge(outerTouched.begin, outerFull.begin);
    fillSpan(row, outerFull.begin, innerTouched.begin, rim);
    innerEdge(innerTouched.begin, innerFull.begin);
    if (filled) fillSpan(row, innerFull.begin, innerFull.end, fill);
    innerEdge(innerFull.end, innerTouched.end);
    fillSpan(row, innerTouched.end, outerFull.end, rim);
    outerEdge(outerFull.end, outerTouched.end);
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

/// The pixels from a line across one end to a line across the other, so that corners are square.
Span lineAlong(double a, double b, int width, int limit) {
  return hull(lineAcross(a, width, limit), lineAcross(b, width, limit));
}

bool isStraight(Point from, Point to) {
  return from.x == to.x || from.y == to.y;
}

/// How far from its middle a slanted line or a rim is seen.
double softReach(double lineWidth) {
  return lineWidth / 2 + 0.5;
}

/// A line that is neither horizontal nor vertical, with round ends.
void paintSlantedLine(const BitmapView& target, const Area& area, Point from, Point to, double width,
                      std::uint32_t pixel) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  const Point along = {(to.x - from.x) / length, (to.y - from.y) / length};
  const double reach = softReach(width);
  for (int y = area.rows.begin; y < area.rows.end; ++y) {
    std::uint32_t* row = target.row(y);
    const double dy = y + 0.5 - from.y;
    const double middle = from.x + dy * along.x / along.y;
    const Span columns = centredSpan(middle, reach / std::abs(along.y) + 1, area.columns);
    for (int x = columns.begin; x < columns.end; ++x) {
      const double dx = x + 0.5 - from.x;
      const double across = dx * along.y - dy * along.x;
      const double travelled = dx * along.x + dy * along.y;
      const double beyond = std::max({0.0, -travelled, travelled - length});
      const double coverage = reach - std::sqrt(across * across + beyond * beyond);
      row[x] = mix(row[x], pixel, toWeight(coverage * kFullWeight));
    }
  }
}

bool isFinite(const DrawCommand& command) {
  return std::isfinite(command.x1) && std::isfinite(command.y1) && std::isfinite(command.x2) &&
         std::isfinite(command.y2);
}

bool isUsable(double scale) {
  return scale > 0 && scale < kFarAway;
}

/// Turns the commands of a picture of some size into pixels.
class Painter {
public:
  Painter(const PaintScale& scale, PixelSize size) : scale_(scale), size_(size) {}

  Area wholeArea() const { return {{0, size_.width}, {0, size_.height}}; }

  /// All pixels of the picture that the command can change.
  Area areaOf(const DrawCommand& command) const {
    if (!isUsable(scale_.pixelsPerTwip) || !isUsable(scale_.pixelsPerDrawWidth) || !isFinite(command)) {
      return {};
    }
    switch (command.kind) {
      case DrawCommand::Kind::Line:
        return overlap(lineArea(from(command), to(command), lineWidth(command)), wholeArea());
      case DrawCommand::Kind::Circle:
        return around(from(command), radius(command) + softReach(lineWidth(command)));
      case DrawCommand::Kind::Print:
        break;  // Letters may reach farther than their line says.
    }
    return wholeArea();
  }

  void paintLine(const BitmapView& target, const Area& area, const DrawCommand& command) const {
    if (isStraight(from(command), to(command))) {
      fillArea(target, area, pixelOf(command.color));
    } else {
      paintSlantedLine(target, area, from(command), to(command), lineWidth(command), pixelOf(command.color));
    }
  }

  void paintCircle(const BitmapView& target, const Area& area, const DrawCommand& command) const {
    CirclePainter(from(command), radius(command), lineWidth(command))
        .paint(target, area, pixelOf(command.color), command.filled, pixelOf(command.fill));
  }

  void paintText(const BitmapView& target, const Area& area, const DrawCommand& command, TextView text,
                 const TextDrawer& drawText) const {
    const Point corner = from(command);
    if (!(corner.x > -kFarAway && corner.x < size_.width)) return;
    if (!(corner.y > -kFarAway && corner.y < size_.height)) return;
    drawText(target, toRect(area), text, static_cast<int>(std::lround(corner.x)),
             static_cast<int>(std::lround(corner.y)), command.color);
  }

private:
  Area lineArea(Point from, Point to, double width) const {
    if (isStraight(from, to)) {
      const int wholeWidth = static_cast<int>(std::lround(width));
      return {lineAlong(from.x, to.x, wholeWidth, size_.width),
              lineAlong(from.y, to.y, wholeWidth, size_.height)};
    }
    const Area start = around(from, softReach(width));
    const Area end = around(to, softReach(width));
    // An end outside the picture counts, too, though its own area is empty.
    return {hull(start.columns, end.columns), hull(start.rows, end.rows)};
  }

  Area around(Point middle, double reach) const {
    return {centredSpan(middle.x, reach, wholeArea().columns),
            centredSpan(middle.y, reach, wholeArea().rows)};
  }

  Point from(const DrawCommand& command) const { return toPixels(command.x1, command.y1); }
  Point to(const DrawCommand& command) const { return toPixels(command.x2, command.y2); }
  Point toPixels(float x, float y) const { return {x * scale_.pixelsPerTwip, y * scale_.pixelsPerTwip}; }
  double radius(const DrawCommand& command) const { return command.x2 * scale_.pixelsPerTwip; }
  double lineWidth(const DrawCommand& command) const {
    return std::clamp(command.drawWidth * scale_.pixelsPerDrawWidth, 1.0, kFarAway);
  }

  const PaintScale& scale_;
  PixelSize size_;
};

}  // namespace

void paint(const DrawingList& drawing, Color backColor, const PaintScale& scale, const BitmapView& target,
           const TextDrawer& drawText, const PixelRect& area) {
  if (target.pixels == nullptr || target.width <= 0 || target.height <= 0) return;
  const Painter painter(scale, {target.width, target.height});
  const Area asked = overlap(toArea(area), painter.wholeArea());
  fillArea(target, asked, pixelOf(backColor));
  for (const DrawCommand& command : drawing.commands) {
    const Area visible = overlap(painter.areaOf(command), asked);
    if (visible.isEmpty()) continue;
    switch (command.kind) {
      case DrawCommand::Kind::Line:
        painter.paintLine(target, visible, command);
        break;
      case DrawCommand::Kind::Circle:
        painter.paintCircle(target, visible, command);
        break;
      case DrawCommand::Kind::Print:
        if (drawText) painter.paintText(target, visible, command, drawing.text(command), drawText);
        break;
    }
  }
}

PixelRect changedArea(const DrawingList& before, const DrawingList& after, const PaintScale& scale,
                      PixelSize size) {
  const Painter painter(scale, size);
  // Equal commands print equal texts only if all characters are equal.
  if (before.characters != after.characters) return toRect(painter.wholeArea());
  const auto [oldBegin, newBegin] = std::mismatch(before.commands.begin(), before.commands.end(),
                                                  after.commands.begin(), after.commands.end());
  const auto [oldEnd, newEnd] = std::mismatch(before.commands.rbegin(), std::make_reverse_iterator(oldBegin),
                                              after.commands.rbegin(), std::make_reverse_iterator(newBegin));
  Area changed;
  const auto add = [&](const DrawCommand& command) { changed = hull(changed, painter.areaOf(command)); };
  std::for_each(oldBegin, oldEnd.base(), add);
  std::for_each(newBegin, newEnd.base(), add);
  return toRect(changed);
}

}  // namespace fiar
