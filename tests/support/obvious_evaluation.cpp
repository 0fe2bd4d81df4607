#include "support/obvious_evaluation.h"

#include <algorithm>
#include <array>
#include <utility>

namespace fiar::test {
namespace {

constexpr std::array<std::pair<int, int>, 8> kDirections{
    {{1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}}};

Text rawKey(const Board& board, int column, int row, const std::pair<int, int>& step) {
  Text key;
  for (int k = -4; k <= 4; ++k) {
    const int x = column + k * step.first;
    const int y = row + k * step.second;
    if (k == 0) {
      key += u'P';
    } else if (x >= board.boardCols || y >= board.boardRows || x < 0 || y < 0) {
      key += u'0';
    } else {
      key += static_cast<char16_t>(u'0' + static_cast<int>(board.board(x, y)));
    }
  }
  return key;
}

Text keyOfSide(Text key, double side) {
  if (side == 1) std::replace(key.begin(), key.end(), u'2', u'X');
  if (side == 2) {
    std::replace(key.begin(), key.end(), u'1', u'X');
    std::replace(key.begin(), key.end(), u'2', u'1');
  }
  std::replace(key.begin(), key.end(), u'X', u'0');
  return key;
}

}  // namespace

void obviousEvaluation(double side, Board& board, Toolkit& toolkit) {
  for (int i = 0; i < board.boardCols; ++i) {
    for (int j = 0; j < board.boardRows; ++j) {
      if (board.board(i, j) != 0) continue;
      for (const auto& step : kDirections) {
        const Text text = toolkit.variables().getVar(keyOfSide(rawKey(board, i, j, step), side));
        const double w = text.empty() ? 0 : toolkit.platform().regional.number(text).value_or(0);
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
