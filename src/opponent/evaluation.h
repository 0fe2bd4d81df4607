#pragma once

#include <array>
#include <cstdint>

#include "board/board.h"
#include "platform/regional_format.h"
#include "toolkit/variable_store.h"

namespace fiar {

/// The largest board that can be evaluated, in cells a side.
inline constexpr int kLargestBoard = 30;

/// What a side's stones on a line through a candidate add to its score, by the window of the nine cells about
/// it: bit 0 is the cell 4 places before it, bit 4 the candidate itself (always 0), bit 8 the cell 4 places
/// after it.
///
///     bit    0  1  2  3  4  5  6  7  8
///     cell  -4 -3 -2 -1  P +1 +2 +3 +4
struct LineScores {
  std::array<double, 512> forward{};   ///< read along the line
  std::array<double, 512> backward{};  ///< read from the line's other end
};

/// The weights of all patterns, mirrored from the variable store so that an evaluation builds no text. An
/// entry that is missing, empty or no number weighs 0.
class PatternWeights {
public:
  /// Refers to both, which outlive it. Nothing is read before refresh().
  PatternWeights(const VariableStore& variables, const RegionalFormat& regional)
      : variables_(variables), regional_(regional) {}

  /// Reads all weights again if any entry of the store has changed since the last time.
  void refresh();

  /// The scores of the side on move.
  const LineScores& attack() const { return attack_; }
  /// The scores of the other side.
  const LineScores& defence() const { return defence_; }

private:
  const VariableStore& variables_;
  const RegionalFormat& regional_;
  bool read_ = false;
  std::uint64_t revision_ = 0;  ///< of the store when it was last read
  LineScores attack_;
  LineScores defence_;
};

/// Scores every empty cell for one side (1 or 2; for any other value the stones of 1 count as its own, and
/// a line with a stone of 2 adds nothing) and adds the scores to `attackWeights` when it is the side on move,
/// otherwise to `defenceWeights`. A cell where a side completes five gets a marker in `attackWeights`. The
/// grids must have the board's size, which is at most kLargestBoard (std::length_error beyond); they are not
/// cleared.
void CalcUtezi2(double side, Board& board, PatternWeights& weights);

}  // namespace fiar
