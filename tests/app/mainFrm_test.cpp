#include "app/mainFrm.h"

#include <gtest/gtest.h>

#include <limits>

#include "opponent/pattern_table.h"
#include "support/allocation_count.h"
#include "support/running_game.h"

namespace fiar {
namespace {

class MainWindow : public testing::Test, protected test::RunningGame {
protected:
  MainWindow() {
    load();
    tick();
  }

  /// Fills the board with a pattern in which no side has more than two in a row, but for one cell.
  void fillBut(int freeColumn, int freeRow) {
    for (int column = 0; column < game.columns(); ++column) {
      for (int row = 0; row < game.rows(); ++row) {
        game.board(column, row) = (column + 2 * row) % 4 < 2 ? kHuman : kComputer;
      }
    }
    game.board(freeColumn, freeRow) = kNobody;
  }

  std::size_t soundsOf(const std::string& image) const {
    const auto& calls = machine.sound.calls;
    return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), std::optional(image)));
  }
};

TEST_F(MainWindow, OpensWithAnEmptyBoardAndNoGame) {
  test::RunningGame other;
  other.load();
  EXPECT_FALSE(other.window.Command1.Visible);
  EXPECT_EQ(other.window.boardPic.drawing().commands.front().drawWidth, 1);
  other.tick();
  EXPECT_TRUE(other.window.Command1.Visible);
  EXPECT_EQ(other.window.boardPic.drawing().commands.front().drawWidth, 2);
  EXPECT_EQ(other.game.player, kNobody);
  EXPECT_EQ(other.game.board.columns(), 15);
  EXPECT_EQ(other.game.attackWeights.rows(), 15);
  EXPECT_EQ(other.window.Combo1.ListIndex(), 1);
  EXPECT_EQ(other.game.lastMove, CellPoint());
  EXPECT_EQ(other.window.tapSound.size(), 1192U);
  EXPECT_EQ(other.window.errorSound.size(), 23272U);
}

TEST_F(MainWindow, NamesAMissingPatternTable) {
  test::RunningGame other;
  other.machine.resources.loadRealOnes = false;
  EXPECT_THROW(other.load(), PatternTableError);
}

TEST_F(MainWindow, SidesOpenAlternatelyAcrossSizeChanges) {
  start();
  EXPECT_EQ(game.player, kHuman);
  EXPECT_FALSE(window.Command1.Visible);
  window.Combo1.setListIndex(3);
  EXPECT_EQ(game.player, kComputer);
  EXPECT_EQ(game.board.columns(), 30);
  tick();
  EXPECT_EQ(game.player, kHuman);
  EXPECT_EQ(stones(kComputer), 1);
  EXPECT_FALSE(window.Command1.Visible);
  // Choosing the same size again is no change; without a selection the size stays and a game starts.
  window.Combo1.setListIndex(3);
  EXPECT_EQ(stones(kComputer), 1);
  window.Combo1.setListIndex(-1);
  EXPECT_EQ(game.board.columns(), 30);
  EXPECT_EQ(game.player, kHuman);
  for (const auto& [index, size] : {std::pair{0, 10}, {1, 15}, {2, 20}}) {
    window.Combo1.setListIndex(index);
    EXPECT_EQ(game.board.columns(), size);
    EXPECT_EQ(game.boardRows, size);
  }
}

TEST_F(MainWindow, TheComputerAnswersOnTheNextTick) {
  start();
  click(7, 7);
  EXPECT_EQ(game.board(7, 7), kHuman);
  EXPECT_EQ(game.player, kComputer);
  EXPECT_EQ(stones(kComputer), 0);
  tick();
  EXPECT_EQ(stones(kComputer), 1);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_EQ(game.board(roundToEven(game.lastMove.x), roundToEven(game.lastMove.y)), kComputer);
  // One evaluation for the refresh and one for the turn, without clearing the grids in between: the cell next
  // to the human's stone has twice its defence.
  const double once = 2 * 9 * 80;
  EXPECT_EQ(game.defenceWeights(6, 6), 2 * once);
}

TEST_F(MainWindow, TheEvaluationIsRefreshedOnlyAfterAChange) {
  start();
  tick();
  game.attackWeights(0, 0) = 5;
  tick();
  EXPECT_EQ(game.attackWeights(0, 0), 5);
  game.lastMoveTime = 1;
  tick();
  EXPECT_EQ(game.attackWeights(0, 0), 0);
  EXPECT_EQ(game.lastMoveTime, machine.clock.seconds);
  EXPECT_EQ(game.lastCalcTime, machine.clock.seconds);
}

TEST_F(MainWindow, AClickBeforeTheTickPlaysForTheComputer) {
  start();
  click(3, 3);
  machine.clock.advance(1);
  click(4, 4);
  EXPECT_EQ(game.board(4, 4), kComputer);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_EQ(game.lastMoveTime, machine.clock.seconds);
  EXPECT_EQ(soundsOf(window.tapSound), 1U);
}

TEST_F(MainWindow, OnlyAPlainLeftClickOnTheBoardInAGameCounts) {
  click(3, 3);
  EXPECT_EQ(stones(kHuman), 0);
  start();
  moveTo(3, 3);
  release(kRightButton);
  release(kMiddleButton);
  for (const int shift : {kShiftKey, kCtrlKey, kAltKey}) release(kLeftButton, shift);
  for (const auto& [column, row] : {std::pair{-2, 3}, {15, 3}, {3, -2}, {3, 15}, {15, 15}})
    click(column, row);
  constexpr float kHuge = std::numeric_limits<float>::max();
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  for (const float position : {kHuge, -kHuge}) {
    window.boardPic.MouseMove(kLeftButton, 0, position, position);
    release();
  }
  EXPECT_EQ(stones(kHuman), 0);
  EXPECT_TRUE(machine.sound.calls.empty());
  window.boardPic.MouseMove(kLeftButton, 0, kNan, kNan);
  tick();
}

TEST_F(MainWindow, ThePointersCellIsTheOneUnderIt) {
  struct Row {
    float position;
    double cell;
  };
  // Divided as whole numbers toward zero: the first cell reaches as far beyond the edge.
  const Row rows[] = {{0, 0},  {663, 0},  {663.5F, 1}, {664, 1},   {9959.4F, 14},
                      {-1, 0}, {-663, 0}, {-664, -1},  {9960, 15}, {1e30F, 3234162}};
  for (const Row& row : rows) {
    window.boardPic.MouseMove(0, 0, row.position, row.position);
    EXPECT_EQ(game.srX, row.cell) << row.position;
    EXPECT_EQ(game.srY, row.cell) << row.position;
  }
}

TEST_F(MainWindow, ATakenCellGivesTheErrorSoundAndNothingElse) {
  start();
  click(7, 7);
  EXPECT_EQ(machine.sound.calls, (decltype(machine.sound.calls){std::nullopt, window.tapSound}));
  tick();
  const Board before = game;
  click(7, 7);
  EXPECT_EQ(soundsOf(window.errorSound), 1U);
  EXPECT_EQ(game.board, before.board);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_EQ(game.lastMoveTime, before.lastMoveTime);
}

TEST_F(MainWindow, SoundIsSwitchedByTheCheckBox) {
  for (const auto& [value, sounds] : {std::pair{0, 0U}, {2, 0U}, {1, 1U}}) {
    window.Check1.Value = value;
    window.Check1.Click();
    start();
    tick();
    click(14, 14);
    tick();
    click(14, 14);
    EXPECT_EQ(soundsOf(window.tapSound), sounds) << value;
    EXPECT_EQ(soundsOf(window.errorSound), sounds) << value;
  }
  window.tapSound.clear();
  machine.sound.calls.clear();
  window.playWave(window.tapSound);
  EXPECT_TRUE(machine.sound.calls.empty());
}

TEST_F(MainWindow, AHumanLineIsFoundAfterTheComputersAnswer) {
  start();
  for (int column = 3; column < 7; ++column) game.board(column, 0) = kHuman;
  click(7, 0);
  EXPECT_EQ(game.player, kComputer);
  tick();
  EXPECT_EQ(stones(kComputer), 1);
  EXPECT_EQ(game.player, kNobody);
  EXPECT_EQ(game.winMarks(7, 0), kHuman);
  EXPECT_EQ(window.scoreLabel[0].Caption, u"1");
  EXPECT_FALSE(window.Command1.Visible);
  const Board before = game;
  tick();
  EXPECT_TRUE(window.Command1.Visible);
  click(10, 10);
  EXPECT_EQ(game.board, before.board);
  start();
  EXPECT_EQ(stones(kHuman), 0);
  EXPECT_EQ(game.lastMove, before.lastMove);
  EXPECT_EQ(window.scoreLabel[0].Caption, u"1");
}

TEST_F(MainWindow, TheComputerCompletesItsOwnFiveRatherThanBlock) {
  start();
  for (int column = 3; column < 7; ++column) {
    game.board(column, 2) = kHuman;
    game.board(column, 9) = kComputer;
  }
  click(14, 14);
  tick();
  EXPECT_EQ(game.lastMove.y, 9);
  EXPECT_EQ(game.winMarks(roundToEven(game.lastMove.x), 9), kComputer);
  EXPECT_EQ(window.scoreLabel[1].Caption, u"1");
}

TEST_F(MainWindow, AFullBoardAfterTheHumansStoneStartsAGameThatTheHumanOpens) {
  for (const bool flag : {true, false}) {
    start();
    fillBut(0, 0);
    // The last stone completes five; the new game clears it before anyone looks.
    for (int column = 1; column < 5; ++column) game.board(column, 0) = kHuman;
    game.player = kHuman;
    game.firstMoveFlag = flag;
    click(0, 0);
    tick();
    EXPECT_EQ(game.player, kHuman);
    EXPECT_EQ(game.firstMoveFlag, !flag);
    EXPECT_EQ(stones(kHuman) + stones(kComputer), 0);
    EXPECT_EQ(game.score[0], 0);
  }
}

TEST_F(MainWindow, AFullBoardAfterTheComputersStoneWaitsForASize) {
  start();
  fillBut(0, 0);
  game.player = kComputer;
  tick();
  EXPECT_EQ(stones(kNobody), 0);
  ASSERT_EQ(game.player, kHuman);
  tick();
  EXPECT_FALSE(window.Command1.Visible);
  click(5, 5);
  EXPECT_EQ(soundsOf(window.errorSound), 1U);
  window.Combo1.setListIndex(0);
  EXPECT_EQ(stones(kNobody), 100);
}

TEST_F(MainWindow, PrintsTheDiagnosticsAlsoBetweenGames) {
  moveTo(4, 11);
  tick();
  const auto& drawing = window.debugPic.drawing();
  ASSERT_EQ(drawing.commands.size(), 3U);
  EXPECT_EQ(drawing.text(drawing.commands[0]), u"srX = 4");
  EXPECT_EQ(drawing.text(drawing.commands[1]), u"srY = 11");
  EXPECT_EQ(drawing.text(drawing.commands[2]), u"player = 0");
  EXPECT_LT(drawing.commands[0].y1, drawing.commands[1].y1);
}

TEST_F(MainWindow, ATickWithNothingChangedDrawsTheSameAndAllocatesNothing) {
  window.Combo1.setListIndex(3);
  tick();
  fillBut(15, 15);
  tick();
  const DrawingList before = window.boardPic.drawing();
  const std::size_t allocations = test::allocationCount();
  tick();
  EXPECT_EQ(test::allocationCount() - allocations, 0U);
  EXPECT_EQ(window.boardPic.drawing(), before);
}

}  // namespace
}  // namespace fiar
