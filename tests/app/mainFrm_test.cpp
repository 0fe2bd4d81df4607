#include "app/mainFrm.h"

#include <gtest/gtest.h>

#include <limits>

#include "opponent/pattern_table.h"
#include "support/allocation_count.h"
#include "support/running_game.h"

namespace fiar {
namespace {

struct MainWindow : testing::Test, test::RunningGame {
  MainWindow() { load(); }

  /// The side on move, and how many stones the human and the computer have.
  using Position = std::array<double, 3>;
  Position position() const {
    return {game.player, static_cast<double>(stones(kHuman)), static_cast<double>(stones(kComputer))};
  }

  /// Fills the board but for its first cell with a pattern in which no side has more than two in a row.
  void fillButOne() {
    for (int column = 0; column < game.columns(); ++column) {
      for (int row = 0; row < game.rows(); ++row) {
        game.board(column, row) = (column + 2 * row) % 4 < 2 ? kHuman : kComputer;
      }
    }
    game.board(0, 0) = kNobody;
  }
};

TEST_F(MainWindow, OpensWithAnEmptyBoardAndNoGame) {
  EXPECT_FALSE(window.Command1.Visible);
  EXPECT_EQ(window.boardPic.drawing().commands.front().drawWidth, 1);
  tick();
  EXPECT_TRUE(window.Command1.Visible);
  EXPECT_EQ(window.boardPic.drawing().commands.front().drawWidth, 2);
  click(3, 3);
  EXPECT_EQ(position(), (Position{kNobody, 0, 0}));
  EXPECT_EQ(game.board.columns(), 15);
  EXPECT_EQ(window.Combo1.ListIndex(), 1);
  EXPECT_EQ(window.Timer1.Interval, 5);
  EXPECT_EQ(game.lastMove, CellPoint());
  machine.resources.loadRealOnes = false;
  EXPECT_THROW(load(), PatternTableError);
}

TEST_F(MainWindow, SidesOpenAlternatelyAcrossSizeChanges) {
  start();
  EXPECT_EQ(game.player, kHuman);
  window.Combo1.setListIndex(3);
  EXPECT_EQ(game.player, kComputer);
  tick();
  EXPECT_EQ(position(), (Position{kHuman, 0, 1}));
  EXPECT_FALSE(window.Command1.Visible);
  // Choosing the same size again is no change; without a selection the size stays and a game starts.
  window.Combo1.setListIndex(3);
  EXPECT_EQ(stones(kComputer), 1);
  double opener = kHuman;
  for (const auto& [index, size] : {std::pair{-1, 30}, {0, 10}, {1, 15}, {2, 20}}) {
    window.Combo1.setListIndex(index);
    EXPECT_EQ(game.player, opener);
    opener = 3 - opener;
    EXPECT_EQ(stones(kNobody), size * size);
    EXPECT_EQ(game.boardRows, size);
  }
}

TEST_F(MainWindow, TheComputerAnswersOnTheNextTick) {
  start();
  click(7, 7);
  EXPECT_EQ(game.board(7, 7), kHuman);
  EXPECT_EQ(position(), (Position{kComputer, 1, 0}));
  tick();
  EXPECT_EQ(position(), (Position{kHuman, 1, 1}));
  EXPECT_EQ(game.board(roundToEven(game.lastMove.x), roundToEven(game.lastMove.y)), kComputer);
  // One evaluation for the refresh and one for the turn, without clearing the grids in between: the cell next
  // to the human's stone has twice its defence.
  EXPECT_EQ(game.defenceWeights(6, 6), 2 * (2 * 9 * 80));
  // A taken cell gives the error sound and nothing else.
  const Board before = game;
  click(7, 7);
  EXPECT_EQ(game.board, before.board);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_EQ(game.lastMoveTime, before.lastMoveTime);
  const std::optional<std::string> stop;
  EXPECT_EQ(machine.sound.calls, (std::vector{stop, {window.tapSound}, stop, {window.errorSound}}));
}

TEST_F(MainWindow, AClickBeforeTheTickPlaysForTheComputer) {
  start();
  click(3, 3);
  machine.clock.advance(1);
  click(4, 4);
  EXPECT_EQ(position(), (Position{kHuman, 1, 1}));
  EXPECT_EQ(game.lastMoveTime, machine.clock.seconds);
  EXPECT_EQ(machine.sound.calls.size(), 2U);
}

TEST_F(MainWindow, OnlyAPlainLeftClickOnTheBoardCounts) {
  start();
  moveTo(3, 3);
  for (const int button : {kRightButton, kMiddleButton}) release(button);
  for (const int shift : {kShiftKey, kCtrlKey, kAltKey}) release(kLeftButton, shift);
  for (const auto& [column, row] : {std::pair{-2.0, 3.0}, {15, 3}, {3, -2}, {3, 15}, {1e30, -1e30}})
    click(column, row);
  EXPECT_EQ(position(), (Position{kHuman, 0, 0}));
  EXPECT_TRUE(machine.sound.calls.empty());
}

TEST_F(MainWindow, ThePointersCellIsTheOneUnderIt) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  // Divided as whole numbers toward zero: the first cell reaches as far beyond the edge.
  const std::pair<float, double> rows[] = {{663, 0},   {663.5F, 1}, {9959.4F, 14},    {-663, 0},
                                           {-664, -1}, {9960, 15},  {1e30F, 3234162}, {kNan, 0}};
  for (const auto& [position, cell] : rows) {
    window.boardPic.MouseMove(0, 0, position, position);
    EXPECT_EQ(game.srX, cell) << position;
    EXPECT_EQ(game.srY, cell) << position;
  }
  // Before any grid has been drawn there is no cell.
  game.cellWidth = 0;
  window.boardPic.MouseMove(0, 0, 5000, 5000);
  EXPECT_EQ(game.srX, 0);
}

TEST_F(MainWindow, SoundIsSwitchedByTheCheckBox) {
  EXPECT_EQ(window.tapSound.size(), 1192U);
  EXPECT_EQ(window.errorSound.size(), 23272U);
  for (const auto& [value, calls] : {std::pair{0, 0U}, {2, 0U}, {1, 4U}}) {
    window.Check1.Value = value;
    window.Check1.Click();
    start();
    for (int i = 0; i < 2; ++i) {
      tick();
      click(14, 14);
    }
    EXPECT_EQ(machine.sound.calls.size(), calls) << value;
  }
  window.playWave("");
  EXPECT_EQ(machine.sound.calls.size(), 4U);
}

TEST_F(MainWindow, AHumanLineIsFoundAfterTheComputersAnswer) {
  start();
  for (int column = 3; column < 7; ++column) game.board(column, 0) = kHuman;
  click(7, 0);
  EXPECT_EQ(game.player, kComputer);
  tick();
  EXPECT_EQ(position(), (Position{kNobody, 5, 1}));
  EXPECT_EQ(game.winMarks(7, 0), kHuman);
  EXPECT_FALSE(window.Command1.Visible);
  EXPECT_EQ(window.boardPic.AccessibleName, u"You won");
  EXPECT_EQ(window.Command1.AccessibleName, u"You won. Start");
  const CellPoint lastMove = game.lastMove;
  tick();
  EXPECT_TRUE(window.Command1.Visible);
  click(10, 10);
  EXPECT_EQ(position(), (Position{kNobody, 5, 1}));
  start();
  EXPECT_EQ(stones(kNobody), 225);
  EXPECT_EQ(game.winMarks(7, 0), kNobody);
  EXPECT_EQ(game.lastMove, lastMove);
  EXPECT_EQ(window.scoreLabel[0].Caption, u"1");
}

TEST_F(MainWindow, TheSideOnMoveIsEvaluatedFirst) {
  start();
  for (int i = 4; i < 8; ++i) {
    game.board(i, 3) = kHuman;
    game.board(3, i) = kComputer;
  }
  game.board(8, 3) = kComputer;
  game.board(3, 8) = kHuman;
  click(14, 14);
  tick();
  EXPECT_EQ(game.lastMove, (CellPoint{3, 3}));
  // Both sides complete five there; the marker of the human's line has replaced that of the computer's.
  EXPECT_EQ(game.attackWeights(3, 3), 50'000'000);
}

TEST_F(MainWindow, AFullBoardAfterTheHumansStoneStartsAGameThatTheHumanOpens) {
  start();
  fillButOne();
  // The last stone completes five; the new game, which it is the computer's turn to open, clears it before
  // anyone looks.
  for (int column = 1; column < 5; ++column) game.board(column, 0) = kHuman;
  click(0, 0);
  tick();
  EXPECT_EQ(position(), (Position{kHuman, 0, 0}));
  EXPECT_FALSE(game.firstMoveFlag);
  EXPECT_EQ(game.score[0], 0);
}

TEST_F(MainWindow, AFullBoardAfterTheComputersStoneWaitsForASize) {
  start();
  fillButOne();
  game.player = kComputer;
  tick();
  tick();
  EXPECT_EQ(stones(kNobody), 0);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_FALSE(window.Command1.Visible);
  window.Combo1.setListIndex(0);
  EXPECT_EQ(stones(kNobody), 100);
}

TEST_F(MainWindow, PrintsTheDiagnosticsAlsoBetweenGames) {
  moveTo(4, 11);
  tick();
  const auto& drawing = window.debugPic.drawing();
  ASSERT_EQ(drawing.commands.size(), 3U);
  const TextView lines[] = {u"srX = 4", u"srY = 11", u"player = 0"};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(drawing.text(drawing.commands[i]), lines[i]);
}

TEST_F(MainWindow, ATickWithNothingChangedDrawsTheSameAndNeitherEvaluatesNorAllocates) {
  window.Combo1.setListIndex(3);
  fillButOne();
  tick();
  game.attackWeights(0, 0) = 5;
  const DrawingList before = window.boardPic.drawing();
  // The ring of the pointer lies on top of all, also of the one of the computer's last stone.
  EXPECT_NE(before.commands.back().color, kWhite);
  const std::size_t allocations = test::allocationCount();
  tick();
  EXPECT_EQ(test::allocationCount() - allocations, 0U);
  EXPECT_EQ(window.boardPic.drawing(), before);
  EXPECT_EQ(game.attackWeights(0, 0), 5);
  game.lastMoveTime = 1;
  tick();
  EXPECT_NE(game.attackWeights(0, 0), 5);
  EXPECT_EQ(game.lastMoveTime, machine.clock.seconds);
  EXPECT_EQ(game.lastCalcTime, machine.clock.seconds);
  // Between games nothing is evaluated.
  game.lastMoveTime = 1;
  game.player = kNobody;
  tick();
  EXPECT_EQ(game.defenceWeights(0, 0), 0);
}

}  // namespace
}  // namespace fiar
