#pragma once

#include <random>

#include "app/mainFrm.h"
#include "support/fake_platform.h"

namespace fiar::test {

/// A board of a size with all grids that are read, and cells of a width that divides every size.
inline Board emptyBoard(int size) {
  Board board;
  board.boardCols = board.boardRows = size;
  board.cellWidth = board.cellHeight = 9960.0 / size;
  for (Grid* grid : {&board.board, &board.winMarks, &board.attackWeights, &board.defenceWeights}) {
    resetGrid(board, *grid);
  }
  return board;
}

/// A board with stones of both sides on about one in `oneIn` cells.
inline Board randomBoard(int size, std::mt19937& random, unsigned oneIn) {
  Board board = emptyBoard(size);
  for (int cell = 0; cell < size * size; ++cell) {
    if (random() % oneIn == 0) board.board(cell / size, cell % size) = static_cast<double>(1 + random() % 2);
  }
  return board;
}

/// The evaluation as one would write it down first: a text for every cell and direction, looked up in the
/// variable store. Slow, and the measure of what the product's evaluation gives.
inline void obviousEvaluation(double side, Board& board, Toolkit& toolkit) {
  for (int cell = 0; cell < board.columns() * board.rows(); ++cell) {
    const int column = cell / board.rows();
    const int row = cell % board.rows();
    double& attack = board.attackWeights(column, row);
    double& defence = board.defenceWeights(column, row);
    if (board.board(column, row) != kNobody) continue;
    for (const auto& [dx, dy] :
         {std::pair{1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}}) {
      Text key;
      for (int k = -4; k <= 4; ++k) {
        const bool onBoard = board.board.contains(column + k * dx, row + k * dy);
        double stone = onBoard ? board.board(column + k * dx, row + k * dy) : kNobody;
        // A side that does not exist sees the stones as they are, the others only their own.
        if (side == kHuman || side == kComputer) stone = stone == side ? 1 : 0;
        key += k == 0 ? u'P' : static_cast<char16_t>(u'0' + static_cast<int>(stone));
      }
      const double weight = toolkit.platform().regional.number(toolkit.variables().getVar(key)).value_or(0);
      if (side == board.player) {
        attack += 10 * weight;
        if (attack > 1'000'000) attack = 100'000'000;
      } else {
        defence += 9 * weight;
        if (defence > 1'000'000) attack = 50'000'000;
      }
    }
  }
}

/// The game's window on a fake machine, driven by events alone; each of them takes some time. Nothing is
/// loaded before load().
struct RunningGame : FakeToolkit {
  mainFrm window{toolkit};
  Board& game = window.game;

  void load() const { window.form.Load(); }
  void tick() {
    machine.clock.advance(0.005);
    window.Timer1.Tick();
  }
  void start() {
    machine.clock.advance(0.001);
    window.Command1.Click();
  }

  void moveTo(double column, double row) const {
    const auto centre = [](double cell, double size) { return static_cast<float>((cell + 0.5) * size); };
    window.boardPic.MouseMove(0, 0, centre(column, game.cellWidth), centre(row, game.cellHeight));
  }
  void release(int button = kLeftButton, int shift = 0) {
    machine.clock.advance(0.001);
    window.boardPic.MouseUp(button, shift, 0, 0);
  }
  void click(double column, double row) {
    moveTo(column, row);
    release();
  }
};

}  // namespace fiar::test
