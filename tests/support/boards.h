#pragma once

#include <random>
#include <string_view>
#include <vector>

#include "board/board.h"

namespace fiar::test {

/// A board of a size with all grids allocated and cells of a width that divides every size.
inline Board emptyBoard(int size) {
  Board board;
  board.boardCols = size;
  board.boardRows = size;
  board.cellWidth = 9960.0 / size;
  board.cellHeight = 9960.0 / size;
  for (Grid* grid : {&board.board, &board.winMarks, &board.attackWeights, &board.defenceWeights}) {
    grid->reset(size, size);
  }
  return board;
}

/// A ten by ten board whose upper left corner is drawn in text rows: '1' and '2' are stones, all else is
/// empty.
inline Board boardOf(const std::vector<std::string_view>& rows) {
  Board board = emptyBoard(10);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      const char stone = rows[row][column];
      if (stone == '1' || stone == '2') {
        board.board(static_cast<int>(column), static_cast<int>(row)) = stone - '0';
      }
    }
  }
  return board;
}

/// Puts stones of both sides on about one in `oneIn` cells.
inline void scatterStones(Board& board, std::mt19937& random, unsigned oneIn) {
  for (int column = 0; column < board.columns(); ++column) {
    for (int row = 0; row < board.rows(); ++row) {
      board.board(column, row) = random() % oneIn == 0 ? static_cast<double>(1 + random() % 2) : 0;
    }
  }
}

}  // namespace fiar::test
