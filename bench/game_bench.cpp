// What a move, a tick and a repaint cost, with the obvious evaluation beside the fast one.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "forms/painter.h"
#include "support/game.h"

namespace fiar {
namespace {

/// A board of a size on which one in `oneIn` cells is taken.
Board crowdedBoard(int size, unsigned oneIn) {
  std::mt19937 random(20260314);
  Board board = test::randomBoard(size, random, oneIn);
  board.player = kComputer;
  return board;
}

/// Evaluates a board of 30 x 30 for both sides, whose grids are cleared first.
template <typename Evaluate>
void evaluateBothSides(benchmark::State& state, Evaluate evaluate) {
  Board board = crowdedBoard(30, 3);
  for (auto step : state) {
    resetGrid(board, board.attackWeights);
    resetGrid(board, board.defenceWeights);
    evaluate(kComputer, board);
    evaluate(kHuman, board);
    benchmark::DoNotOptimize(board.attackWeights);
  }
}

void evaluation(benchmark::State& state) {
  test::RunningGame running;
  running.load();
  PatternWeights weights(running.toolkit.variables(), running.machine.regional);
  evaluateBothSides(state, [&](double side, Board& board) { CalcUtezi2(side, board, weights); });
}
BENCHMARK(evaluation);

void obviousEvaluation(benchmark::State& state) {
  test::RunningGame running;
  running.load();
  evaluateBothSides(
      state, [&](double side, Board& board) { test::obviousEvaluation(side, board, running.toolkit); });
}
BENCHMARK(obviousEvaluation);

/// A game on the largest board, loaded and with a given position.
struct LargeGame : test::RunningGame {
  explicit LargeGame(unsigned oneIn) {
    load();
    window.Combo1.setListIndex(3);
    tick();
    game.board = crowdedBoard(30, oneIn).board;
    game.player = kHuman;
    tick();
  }
};

void computersTurn(benchmark::State& state) {
  LargeGame running(3);
  const Grid position = running.game.board;
  for (auto step : state) {
    running.game.board = position;
    running.game.player = kComputer;
    running.game.lastMoveTime += 1;
    running.tick();
  }
}
BENCHMARK(computersTurn);

/// The board picture of a full board as the window shows it at a size in percent.
struct ShownBoard : LargeGame {
  explicit ShownBoard(std::int64_t percent)
      : LargeGame(1),
        side(static_cast<int>(664 * percent / 100)),
        pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side)),
        scale{.pixelsPerTwip = side / window.boardPic.Width, .pixelsPerDrawWidth = side / 664.0} {}

  const DrawingList& drawing() const { return window.boardPic.drawing(); }

  /// Paints what differs from what is shown.
  void show(const DrawingList& wanted) {
    const PixelRect area = changedArea(shown, wanted, scale, {side, side});
    if (area.width == 0) return;
    paint(wanted, window.boardPic.BackColor, scale, {pixels.data(), side, side, side}, {}, area);
    shown = wanted;
    benchmark::DoNotOptimize(pixels.data());
  }

  int side;
  std::vector<std::uint32_t> pixels;
  PaintScale scale;
  DrawingList shown;
};

void tickWithNothingChanged(benchmark::State& state) {
  LargeGame running(1);
  const std::uint64_t drawn = running.window.boardPic.revision();
  for (auto step : state) running.tick();
  if (running.window.boardPic.revision() != drawn) state.SkipWithError("the board was drawn anew");
}
BENCHMARK(tickWithNothingChanged);

void painting(benchmark::State& state) {
  ShownBoard board(state.range(0));
  for (auto step : state) {
    board.shown.clear();
    board.show(board.drawing());
  }
}
BENCHMARK(painting)->ArgName("percent")->Arg(100)->Arg(300);

void paintingAfterTheRingMoved(benchmark::State& state) {
  ShownBoard board(state.range(0));
  std::vector<DrawingList> drawings;
  for (const double column : {7, 8}) {
    board.moveTo(column, 7);
    board.tick();
    drawings.push_back(board.drawing());
  }
  board.show(board.drawing());
  std::size_t turn = 0;
  for (auto step : state) {
    board.show(drawings[turn]);
    turn = 1 - turn;
  }
}
BENCHMARK(paintingAfterTheRingMoved)->ArgName("percent")->Arg(100)->Arg(300);

}  // namespace
}  // namespace fiar
