// What a move, a tick and a repaint cost. The evaluation stands beside the obvious way of doing it, so that
// the figure of one run is a ratio.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "forms/painter.h"
#include "support/boards.h"
#include "support/loaded_toolkit.h"
#include "support/obvious_evaluation.h"
#include "support/running_game.h"

namespace fiar {
namespace {

/// A board of a size on which one in `oneIn` cells is taken.
Board crowdedBoard(int size, unsigned oneIn) {
  std::mt19937 random(20260314);
  Board board = test::emptyBoard(size);
  test::scatterStones(board, random, oneIn);
  board.player = kComputer;
  return board;
}

void forBoards(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"size", "oneIn"})->Unit(benchmark::kMicrosecond);
  for (const int size : {10, 15, 20, 30}) bench->Args({size, 3});
  bench->Args({30, 1000})->Args({30, 2});
}

void clear(Board& board) {
  resetGrid(board, board.attackWeights);
  resetGrid(board, board.defenceWeights);
}

void evaluation(benchmark::State& state) {
  test::LoadedToolkit loaded;
  PatternWeights weights(loaded.toolkit.variables(), loaded.machine.regional);
  Board board = crowdedBoard(static_cast<int>(state.range(0)), static_cast<unsigned>(state.range(1)));
  for (auto step : state) {
    clear(board);
    CalcUtezi2(kComputer, board, weights);
    CalcUtezi2(kHuman, board, weights);
    benchmark::DoNotOptimize(board.attackWeights);
  }
}
BENCHMARK(evaluation)->Apply(forBoards);

void obviousEvaluation(benchmark::State& state) {
  test::LoadedToolkit loaded;
  Board board = crowdedBoard(static_cast<int>(state.range(0)), static_cast<unsigned>(state.range(1)));
  for (auto step : state) {
    clear(board);
    test::obviousEvaluation(kComputer, board, loaded.toolkit);
    test::obviousEvaluation(kHuman, board, loaded.toolkit);
    benchmark::DoNotOptimize(board.attackWeights);
  }
}
BENCHMARK(obviousEvaluation)->Apply(forBoards);

/// A game on the largest board, loaded and with a given position.
struct LargeGame : test::RunningGame {
  explicit LargeGame(unsigned oneIn) {
    load();
    window.Combo1.setListIndex(3);
    tick();
    game.board = crowdedBoard(30, oneIn).board;
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
BENCHMARK(computersTurn)->Unit(benchmark::kMicrosecond);

void tickWithNothingChanged(benchmark::State& state) {
  LargeGame running(1);
  running.game.player = kHuman;
  running.tick();
  const DrawingList shown = running.window.boardPic.drawing();
  for (auto step : state) {
    running.tick();
    benchmark::DoNotOptimize(running.window.boardPic.drawing() == shown);
  }
}
BENCHMARK(tickWithNothingChanged)->Unit(benchmark::kMicrosecond);

void tickWithThePointerMoved(benchmark::State& state) {
  LargeGame running(1);
  running.game.player = kHuman;
  running.tick();
  double column = 0;
  for (auto step : state) {
    column = 1 - column;
    running.moveTo(column, 7);
    running.tick();
  }
}
BENCHMARK(tickWithThePointerMoved)->Unit(benchmark::kMicrosecond);

void tickWithANewStone(benchmark::State& state) {
  LargeGame running(3);
  running.game.player = kHuman;
  running.tick();
  double& cell = running.game.board(7, 7);
  for (auto step : state) {
    cell = cell == kHuman ? kNobody : kHuman;
    running.game.lastMoveTime += 1;
    running.tick();
  }
}
BENCHMARK(tickWithANewStone)->Unit(benchmark::kMicrosecond);

void painting(benchmark::State& state) {
  LargeGame running(1);
  running.tick();
  const int side = static_cast<int>(664 * state.range(0) / 100);
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
  const BitmapView target{pixels.data(), side, side, side};
  const PaintScale scale{side / running.window.boardPic.Width, side / 664.0};
  for (auto step : state) {
    paint(running.window.boardPic.drawing(), running.window.boardPic.BackColor, scale, target, {});
    benchmark::DoNotOptimize(pixels.data());
  }
}
BENCHMARK(painting)->ArgName("percent")->Arg(100)->Arg(300)->Unit(benchmark::kMicrosecond);

void loadingTheTable(benchmark::State& state) {
  test::FakePlatform machine;
  machine.resources.loadRealOnes = true;
  const std::string table = machine.resources.custom(kPatternTableResource).value();
  for (auto step : state) {
    Toolkit toolkit(machine.platform);
    loadPatternTable(table, toolkit);
    benchmark::DoNotOptimize(toolkit.variables().revision());
  }
}
BENCHMARK(loadingTheTable)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace fiar
