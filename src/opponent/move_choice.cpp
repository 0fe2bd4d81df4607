#include "opponent/move_choice.h"

#include <algorithm>

#include "board/drawing.h"

namespace fiar {
namespace {

// Sums up to this are not worth a hint.
constexpr double kHintThreshold = 10'000;
// Spreads the second seed over a wide range.
constexpr double kSeedFactor = 1'000'000;

double scoreOf(const Board& board, int column, int row) {
  return board.attackWeights(column, row) + board.defenceWeights(column, row);
}

template <class Visit>
void forEachEmptyCell(const Board& board, Visit visit) {
  for (int column = 0; column < board.board.columns(); ++column) {
    for (int row = 0; row < board.board.rows(); ++row) {
      if (board.board(column, row) == kNobody) visit(column, row);
    }
  }
}

double bestScore(const Board& board) {
  double best = 0;
  forEachEmptyCell(board, [&](int column, int row) {
    if (scoreOf(board, column, row) > best) best = scoreOf(board, column, row);
  });
  return best;
}

/// Visits the empty cells whose score is exactly the best one.
template <class Visit>
void forEachBestCell(const Board& board, double best, Visit visit) {
  forEachEmptyCell(board, [&](int column, int row) {
    if (scoreOf(board, column, row) == best) visit(column, row);
  });
}

/// A number from 1 to `count`; 0 for a count of 0.
int drawNumber(int count, const Clock& clock, RandomGenerator& random) {
  random.seed(clock.timer());
  const double r = random.next();
  random.seed(clock.timer() * r * kSeedFactor);
  // For the largest numbers below 1 the sum may round up to the next whole number.
  return std::min(static_cast<int>(random.next() * count + 1), count);
}

}  // namespace

void playNextMove(Board& board, const Clock& clock, RandomGenerator& random,
                  const std::function<void()>& startNewGame) {
  const double best = bestScore(board);
  int count = 0;
  forEachBestCell(board, best, [&](int, int) { ++count; });
  const int pick = drawNumber(count, clock, random);
  if (count == 0) {
    startNewGame();
    return;
  }
  int number = 0;
  CellPoint chosen;
  forEachBestCell(board, best, [&](int column, int row) {
    if (++number == pick) chosen = {static_cast<double>(column), static_cast<double>(row)};
  });
  board.lastMove = chosen;
  board.board(roundToEven(chosen.x), roundToEven(chosen.y)) = board.player;
}

void hiliteNextMove(const Board& board, PictureBox& boardPic) {
  const double best = bestScore(board);
  if (best <= kHintThreshold) return;
  forEachBestCell(board, best,
                  [&](int column, int row) { drawCellCircle(board, boardPic, column, row, kGreen); });
}

}  // namespace fiar
