#include "board/victory.h"

#include <optional>

namespace fiar {
namespace {

struct Step {
  int dx;
  int dy;
};

// Every line has one end from which one of these steps walks it.
constexpr std::array<Step, 4> kDirections{{{1, -1}, {1, 0}, {1, 1}, {0, 1}}};

struct WinningLine {
  int column;
  int row;
  Step step;
  double winner;
};

/// The side whose stones fill the line that starts in this cell; nobody when another cell is in it or the
/// edge cuts it short.
double ownerOfLine(const Grid& stones, int column, int row, Step step) {
  const double owner = stones(column, row);
  if (owner == kNobody) return kNobody;
  constexpr int kLast = kWinningLength - 1;
  if (!stones.contains(column + kLast * step.dx, row + kLast * step.dy)) return kNobody;
  for (int k = 1; k < kWinningLength; ++k) {
    if (stones(column + k * step.dx, row + k * step.dy) != owner) return kNobody;
  }
  return owner;
}

std::optional<WinningLine> findWinningLine(const Board& board) {
  for (int column = 0; column < board.board.columns(); ++column) {
    for (int row = 0; row < board.board.rows(); ++row) {
      for (const Step step : kDirections) {
        const double owner = ownerOfLine(board.board, column, row, step);
        if (owner != kNobody) return WinningLine{column, row, step, owner};
      }
    }
  }
  return std::nullopt;
}

}  // namespace

void checkForVictory(Board& board, const ScoreDisplay& display) {
  resetGrid(board, board.winMarks);
  const auto line = findWinningLine(board);
  if (!line) return;
  for (int k = 0; k < kWinningLength; ++k) {
    board.winMarks(line->column + k * line->step.dx, line->row + k * line->step.dy) = line->winner;
  }
  board.player = kNobody;
  const std::size_t side = line->winner == kHuman ? 0 : 1;
  board.score[side] += 1;
  display.scoreLabel[side].Caption = display.regional.numberText(board.score[side]);
  // The reward for a ten-to-nil lead goes by what the labels say; it stays for the rest of the run.
  if (side == 0 && display.scoreLabel[0].Caption == u"10" && display.scoreLabel[1].Caption == u"0") {
    display.Picture2.Picture = display.Picture3.Picture;
  }
}

}  // namespace fiar
