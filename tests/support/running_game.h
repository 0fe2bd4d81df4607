#pragma once

#include "app/mainFrm.h"
#include "support/loaded_toolkit.h"

namespace fiar::test {

/// The game's window on a fake machine, driven by events alone; each of them takes some time. Nothing is
/// loaded before load().
struct RunningGame : FakeToolkit {
  mainFrm window{toolkit};
  Board& game = window.game;

  RunningGame() { machine.resources.loadRealOnes = true; }

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

  int stones(double code) const {
    int count = 0;
    for (int column = 0; column < game.board.columns(); ++column) {
      for (int row = 0; row < game.board.rows(); ++row) count += game.board(column, row) == code ? 1 : 0;
    }
    return count;
  }
};

}  // namespace fiar::test
