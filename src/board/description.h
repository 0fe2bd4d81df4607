#pragma once

#include "board/board.h"
#include "platform/regional_format.h"
#include "platform/text.h"

namespace fiar {

/// The board in words, for players who hear the game: where the ring is, and what has just happened.
class BoardDescription {
public:
  /// \param regional how numbers are written; outlives the description.
  explicit BoardDescription(const RegionalFormat& regional) : regional_(regional) {}

  /// Describes the position: "Column 8, row 7, empty" (or "red", "blue"; columns and rows count from 1 at the
  /// top left), or "Outside the board". As long as the ring stays where it is, "Blue to column 7, row 6."
  /// comes first after the computer's move, and at the end of a game "You won" or "The computer won" stands
  /// alone. Between a stone of the human and the answer to it, it would say the answer before once more.
  Text update(const Board& board);
  /// "You won" or "The computer won" if a game had ended at the last update; empty if none had.
  TextView result() const;

private:
  struct News {
    double winner = kNobody;
    CellPoint computersMove = kNoCell;

    bool operator==(const News&) const = default;
  };

  News newsOf(const Board& board) const;
  Text placeOf(CellPoint cell) const;

  const RegionalFormat& regional_;
  // What the last update found.
  CellPoint ring_;
  std::array<double, 2> score_{};
  News news_;
  bool newsAreFresh_ = false;  ///< the ring has not moved since
};

}  // namespace fiar
