#include "opponent/evaluation.h"

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
constexpr int kAxes = 4;
constexpr std::size_t kMostDiagonals = 2 * kLargestBoard - 1;

std::uint64_t bit(int position) {
  return std::uint64_t{1} << position;
}

/// The cells that hold one code, as bits, once for every line of the board. A cell's bit is its column (in
/// `columns` its row) plus kReach, so that a window may reach over either edge and finds nothing there.
class Occupancy {
public:
  Occupancy() = default;
  Occupancy(const Board& board, double code) {
    for (int column = 0; column < board.columns(); ++column) {
      for (int row = 0; row < board.rows(); ++row) {
        if (board.board(column, row) == code) add(column, row);
      }
    }
  }

  /// The windows of a cell in the order of the directions: rising diagonal, row, falling diagonal, column.
  std::array<std::uint64_t, kAxes> windows(int column, int row) const {
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
    columns_[index(column)] |= bit(row + kReach);
  }

  std::array<std::uint64_t, kMostDiagonals> rising_{};
  std::array<std::uint64_t, kMostDiagonals> falling_{};
  std::array<std::uint64_t, kLargestBoard> rows_{};
  std::array<std::uint64_t, kLargestBoard> columns_{};
};

/// The weights of a cell's lines in all eight directions, in their order.
std::array<double, 2 * kAxes> lineWeights(const Occupancy& own, const Occupancy& foreign, int column, int row,
                                          const PatternWeights& weights) {
  const auto stones = own.windows(column, row);
  const auto strangers = foreign.windows(column, row);
  std::array<double, 2 * kAxes> result{};
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    if (strangers[axis] != 0) continue;
    result[axis] = weights.forward(stones[axis]);
    result[axis + kAxes] = weights.backward(stones[axis]);
  }
  return result;
}

}  // namespace

void PatternWeights::refresh() {
  if (read_ && revision_ == variables_.revision()) return;
  const auto valueOf = [this](int n) {
    const Text* const text = variables_.findVar(patternKey(n));
    return text == nullptr ? 0.0 : regional_.number(*text).value_or(0);
  };
  for (unsigned n = 0; n < kPatternCount; ++n) {
    const double weight = valueOf(static_cast<int>(n));
    // The first digit of a key is its highest bit and stands for the cell farthest before the candidate.
    const unsigned before = n >> kReach;
    const unsigned after = n & 0xF;
    backward_[before << (kReach + 1) | after] = weight;
    unsigned mirrored = 0;
    for (int i = 0; i < kReach; ++i) {
      mirrored |= (before >> i & 1U) << (kReach - 1 - i);
      mirrored |= (after >> i & 1U) << (2 * kReach - i);
    }
    forward_[mirrored] = weight;
  }
  revision_ = variables_.revision();
  read_ = true;
}

void CalcUtezi2(double side, Board& board, PatternWeights& weights) {
  if (board.columns() > kLargestBoard || board.rows() > kLargestBoard) {
    throw std::length_error("the board is too large to be evaluated");
  }
  weights.refresh();
  const Occupancy own(board, side == kComputer ? kComputer : kHuman);
  const Occupancy foreign = side == kHuman || side == kComputer ? Occupancy() : Occupancy(board, kComputer);
  const bool attacking = side == board.player;
  for (int column = 0; column < board.columns(); ++column) {
    for (int row = 0; row < board.rows(); ++row) {
      if (board.board(column, row) != kNobody) continue;
      double& attack = board.attackWeights(column, row);
      double& defence = board.defenceWeights(column, row);
      for (const double weight : lineWeights(own, foreign, column, row, weights)) {
        if (attacking) {
          attack += kAttackFactor * weight;
          if (attack > kFiveThreshold) attack = kWinMarker;
        } else {
          defence += kDefenceFactor * weight;
          // Deliberate: the marker goes to the attack, where it makes the cell one that must be played.
          if (defence > kFiveThreshold) attack = kBlockMarker;
        }
      }
    }
  }
}

}  // namespace fiar
