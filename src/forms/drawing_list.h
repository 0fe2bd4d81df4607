#pragma once

#include <cstdint>
#include <vector>

#include "forms/pixels.h"
#include "platform/text.h"

namespace fiar {

/// One drawing command with the drawing state of its moment. Coordinates are the picture box's own (twips).
struct DrawCommand {
  enum class Kind : std::uint8_t { Line, Circle, Print };

  Kind kind = Kind::Line;
  bool filled = false;          ///< Circle only: whether the inside is painted with `fill`
  std::uint16_t drawWidth = 1;  ///< Line and Circle: width of the line in pixels at 96 DPI
  Color color = kBlack;         ///< the line, or the characters
  Color fill = kBlack;
  float x1 = 0;  ///< start of a line, centre of a circle, top left corner of a text
  float y1 = 0;
  float x2 = 0;  ///< end of a line; for a circle, the distance from centre to rim
  float y2 = 0;
  std::uint32_t textStart = 0;  ///< Print only: its characters in DrawingList::characters
  std::uint32_t textLength = 0;

  bool operator==(const DrawCommand&) const = default;
};

/// What has been drawn on a picture box since it was last cleared, in order.
struct DrawingList {
  std::vector<DrawCommand> commands;
  std::vector<char16_t> characters;

  bool operator==(const DrawingList&) const = default;

  /// Forgets the commands and keeps the memory, so that drawing the same again allocates nothing.
  void clear() {
    commands.clear();
    characters.clear();
  }

  TextView text(const DrawCommand& command) const {
    return {characters.data() + command.textStart, command.textLength};
  }
};

}  // namespace fiar
