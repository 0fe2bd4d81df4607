#include "opponent/evaluation.h"

#include <bit>
#include <stdexcept>

#include "opponent/pattern_table.h"

namespace fiar {
namespace {

constexpr double kAttackFactor = 10;
constexpr double kDefenceFactor = 9;
// A score above this means that the cell completes five.
constexpr double kFiveThreshold = 1'000'000;
constexpr double kWinMarker = 100'000'000;
constexpr double kBlockMarker = 50'000'000;

// How far the neighbours of a cell reach along a line.
constexpr int kReach = 4;
constexpr std::uint64_t kWindowMask = 0x1FF;
constexpr std::size_t kAxes = 4;
constexpr std::size_t kDirections = 2 * kAxes;
constexpr std::size_t kMostDiagonals = 2 * kLargestBoard - 1;

std::uint64_t bit(int position) {
  return std::uint64_t{1} << position;
}

using Windows = std::array<std::uint64_t, kAxes>;

/// The cells that hold one code, as bits, once for every line of the board. A cell's bit is its column (in
/// `columns` its row) plus kReach, so that a window may reach over either edge and finds nothing there.
class Occupancy {
public:
  Occupancy() = default;
  Occupancy(const Board& board, double code) {
    for (int column = 0; column < board.board.columns(); ++column) {
      std::uint64_t stones = 0;
      for (int row = 0; row < board.board.rows(); ++row) {
        stones |= std::uint64_t{board.board(column, row) == code} << row;
      }
      columns_[index(column)] = stones << kReach;
      for (; stones != 0; stones &= stones - 1) add(column, std::countr_zero(stones));
    }
  }

  /// The windows of a cell in the order of the directions: rising diagonal, row, falling diagonal, column.
  Windows windows(int column, int row) const {
    return {window(rising_[risingIndex(column, row)], column), window(rows_[index(row)], column),
            window(falling_[fallingIndex(column, row)], column), window(columns_[index(column)], row)};
  }

private:
  static std::size_t index(int line) { return static_cast<std::size_t>(line); }
  static std::size_t risingIndex(int column, int row) { return index(column + row); }
  static std::size_t fallingIndex(int column, int row) { return index(column - row + kLargestBoard - 1); }
  static std::uint64_t window(std::uint64_t line, int position) { return (line >> position) & kWindowMask; }

  void add(int column, int row) {
    rising_[risingIndex(column, row)] |= bit(column + kReach);
    rows_[index(row)] |= bit(column + kReach);
    falling_[fallingIndex(column, row)] |= bit(column + kReach);
  }

  std::array<std::uint64_t, kMostDiagonals> rising_{};
  std::array<std::uint64_t, kMostDiagonals> falling_{};
  std::array<std::uint64_t, kLargestBoard> rows_{};
  std::array<std::uint64_t, kLargestBoard> columns_{};
};

using CellScores = std::array<double, kDirections>;

/// What a cell's lines add in all eight directions, in their order.
CellScores scoresOf(const Windows& stones, const LineScores& scores) {
  CellScores result{};
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    result[axis] = scores.forward[stones[axis]];
    result[axis + kAxes] = scores.backward[stones[axis]];
  }
  return result;
}

/// Drops the scores of lines with stones that no pattern of the table has.
void dropLines(CellScores& scores, const Windows& strangers) {
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    if (strangers[axis] != 0) scores[axis] = scores[axis + kAxes] = 0;
  }
}

void addAttack(const CellScores& scores, double& attack) {
  for (const double score : scores) {
    attack += score;
    if (attack > kFiveThreshold) attack = kWinMarker;
  }
}

void addDefence(const CellScores& scores, double& attack, double& defence) {
  for (const double score : scores) {
    defence += score;
    // Deliberate: one would expect the marker in the defence. In the attack it makes the cell a must.
    if (defence > kFiveThreshold) attack = kBlockMarker;
  }
}

/// Puts a pattern's score in the windows that show it. The first digit of a key is its highest bit and stands
/// for the cell farthest before the candidate.
void setScore(LineScores& scores, unsigned pattern, double score) {
  const unsigned before = pattern >> kReach;
  const unsigned after = pattern & 0xF;
  scores.backward[before << (kReach + 1) | after] = score;
  unsigned mirrored = 0;
  for (int i = 0; i < kReach; ++i) {
    mirrored |= (before >> i & 1U) << (kReach - 1 - i);
    mirrored |= (after >> i & 1U) << (2 * kReach - i);
  }
  scores.forward[mirrored] = score;
}

}  // namespace

void PatternWeights::refresh() {
  if (read_ && revision_ == variables_.revision()) return;
  for (unsigned n = 0; n < kPatternCount; ++n) {
    const Text* const text = variables_.findVar(patternKey(static_cast<int>(n)));
    const double weight = text == nullptr ? 0 : regional_.number(*text).value_or(0);
    setScore(attack_, n, kAttackFactor * weight);
    setScore(defence_, n, kDefenceFactor * weight);
  }
  revision_ = variables_.revision();
  read_ = true;
}

void CalcUtezi2(double side, Board& board, PatternWeights& weights) {
  if (board.board.columns() > kLargestBoard || board.board.rows() > kLargestBoard) {
    throw std::length_error("the board is too large to be evaluated");
  }
  weights.refresh();
  const Occupancy own(board, side == kComputer ? kComputer : kHuman);
  const bool knownSide = side == kHuman || side == kComputer;
  const Occupancy foreign = knownSide ? Occupancy() : Occupancy(board, kComputer);
  const bool attacking = side == board.player;
  const LineScores& lineScores = attacking ? weights.attack() : weights.defence();
  const Grid& stones = board.board;
  for (int column = 0; column < stones.columns(); ++column) {
    double* const attack = board.attackWeights.cellsOf(column);
    double* const defence = board.defenceWeights.cellsOf(column);
    for (int row = 0; row < stones.rows(); ++row) {
      if (stones(column, row) != kNobody) continue;
      CellScores scores = scoresOf(own.windows(column, row), lineScores);
      if (!knownSide) dropLines(scores, foreign.windows(column, row));
      if (attacking) {
        addAttack(scores, attack[row]);
      } else {
        addDefence(scores, attack[row], defence[row]);
      }
    }
  }
}

}  // namespace fiar
