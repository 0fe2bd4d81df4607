#include "support/obvious_evaluation.h"

#include <array>
#include <utility>

namespace fiar::test {
namespace {

constexpr std::array<std::pair<int, int>, 8> kDirections{
    {{1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}}};

/// The stone that a side sees in a cell: its own as 1, the other's and what is beyond the edge as none. A
/// side that does not exist sees them as they are.
double seenBy(double side, const Grid& stones, int column, int row) {
  const double stone = stones.contains(column, row) ? stones(column, row) : kNobody;
  if (side != kHuman && side != kComputer) return stone;
  return stone == side ? 1 : 0;
}

}  // namespace

void obviousEvaluation(double side, Board& board, Toolkit& toolkit) {
  for (int i = 0; i < board.columns(); ++i) {
    for (int j = 0; j < board.rows(); ++j) {
      if (board.board(i, j) != 0) continue;
      for (const auto& [dx, dy] : kDirections) {
        Text key;
        for (int k = -4; k <= 4; ++k) {
          const double stone = seenBy(side, board.board, i + k * dx, j + k * dy);
          key += k == 0 ? u'P' : static_cast<char16_t>(u'0' + static_cast<int>(stone));
        }
        const Text weight = toolkit.variables().getVar(key);
        const double w = weight.empty() ? 0 : toolkit.platform().regional.number(weight).value_or(0);
        if (side == board.player) {
          board.attackWeights(i, j) += 10 * w;
          if (board.attackWeights(i, j) > 1000000) board.attackWeights(i, j) = 100000000;
        } else {
          board.defenceWeights(i, j) += 9 * w;
          if (board.defenceWeights(i, j) > 1000000) board.attackWeights(i, j) = 50000000;
        }
      }
    }
  }
}

}  // namespace fiar::test
