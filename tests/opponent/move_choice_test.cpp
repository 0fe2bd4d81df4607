#include "opponent/move_choice.h"

#include <gtest/gtest.h>

#include <random>

#include "opponent/weight_overlay.h"
#include "support/boards.h"
#include "support/fake_platform.h"

namespace fiar {
namespace {

class MoveChoice : public testing::Test {
protected:
  MoveChoice() { board.player = kComputer; }

  void play() {
    playNextMove(board, clock, random, [this] { ++newGames; });
  }

  Board board = test::emptyBoard(10);
  test::FakeClock clock;
  test::FakeRandom random;
  PictureBox boardPic;
  int newGames = 0;
};

TEST_F(MoveChoice, PlaysTheOnlyBestCellWhateverIsDrawn) {
  board.attackWeights(3, 7) = 10;
  board.defenceWeights(3, 7) = 5;
  board.attackWeights(4, 7) = 14;
  // A taken cell does not count, whatever its weight.
  board.board(5, 5) = kHuman;
  board.attackWeights(5, 5) = 1e9;
  for (const double drawn : {0.0, 0.5, 0.999999}) {
    random.afterwards = drawn;
    board.board(3, 7) = kNobody;
    play();
    EXPECT_EQ(board.board(3, 7), kComputer);
    EXPECT_EQ(board.lastMove, (CellPoint{3, 7}));
  }
  EXPECT_EQ(board.player, kComputer);
}

TEST_F(MoveChoice, NumbersEqualCellsByColumnsThenRows) {
  struct Row {
    double drawn = 0;
    CellPoint expected;
  };
  const Row rows[] = {{0, {2, 8}}, {0.33, {2, 8}}, {0.34, {4, 1}}, {0.67, {4, 5}}, {0.9999, {4, 5}}};
  for (const Row& row : rows) {
    board = test::emptyBoard(10);
    board.player = kComputer;
    for (const auto& [column, line] : {std::pair{4, 1}, {2, 8}, {4, 5}})
      board.attackWeights(column, line) = 7;
    random.script = {0.25, row.drawn};
    play();
    EXPECT_EQ(board.lastMove, row.expected) << row.drawn;
  }
}

TEST_F(MoveChoice, SeedsTwiceFromTheClock) {
  clock.seconds = 1000;
  random.script = {0.25, 0};
  play();
  EXPECT_EQ(random.seeds, (std::vector<double>{1000, 1000 * 0.25 * 1'000'000}));
}

TEST_F(MoveChoice, EveryCellOfAnEmptyBoardCanBePlayed) {
  std::mt19937 source(4);
  Grid played;
  played.reset(10, 10);
  for (int i = 0; i < 2000; ++i) {
    board = test::emptyBoard(10);
    board.player = kComputer;
    random.script = {0.5, static_cast<double>(source()) / 4294967296.0};
    play();
    ++played(roundToEven(board.lastMove.x), roundToEven(board.lastMove.y));
  }
  for (int column = 0; column < 10; ++column) {
    for (int row = 0; row < 10; ++row) EXPECT_GT(played(column, row), 0) << column << ", " << row;
  }
}

TEST_F(MoveChoice, ABoardWithNothingToPlayStartsANewGameAndIsNotWritten) {
  // Full, or with nothing but cells that are worth less than nothing.
  for (const double stone : {kHuman, kNobody}) {
    for (int column = 0; column < 10; ++column) {
      for (int row = 0; row < 10; ++row) {
        board.board(column, row) = stone;
        board.attackWeights(column, row) = -1;
      }
    }
    const Board before = board;
    newGames = 0;
    play();
    EXPECT_EQ(newGames, 1);
    EXPECT_EQ(board.board, before.board);
    EXPECT_EQ(board.lastMove, before.lastMove);
  }
}

TEST_F(MoveChoice, TheHintRingsAllBestCellsAboveItsThreshold) {
  board.attackWeights(1, 2) = 10'000;
  hiliteNextMove(board, boardPic);
  EXPECT_TRUE(boardPic.drawing().commands.empty());
  board.defenceWeights(1, 2) = 1;
  board.attackWeights(8, 3) = 10'001;
  board.attackWeights(8, 4) = 20'000;
  board.board(8, 4) = kHuman;
  hiliteNextMove(board, boardPic);
  const auto& rings = boardPic.drawing().commands;
  ASSERT_EQ(rings.size(), 2U);
  EXPECT_EQ(rings[0].x1, 996 * 1.5F);
  EXPECT_EQ(rings[1].y1, 996 * 3.5F);
  EXPECT_EQ(rings[0].color, kGreen);
  EXPECT_FALSE(rings[0].filled);
}

TEST_F(MoveChoice, TheOverlayPrintsWhatIsAboveItsThreshold) {
  board.attackWeights(0, 0) = 100'000'000;
  board.attackWeights(0, 1) = 6000;
  board.defenceWeights(0, 1) = 6000;
  board.defenceWeights(9, 9) = 10'000;
  drawutezi(board, boardPic);
  struct Row {
    TextView text;
    float x;
    float y;
  };
  const Row rows[] = {{u"100000000", 5, 5}, {u"100000000", 5, 25}, {u"12000", 5, 996 + 25}};
  const auto& drawing = boardPic.drawing();
  ASSERT_EQ(drawing.commands.size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(drawing.text(drawing.commands[i]), rows[i].text);
    EXPECT_EQ(drawing.commands[i].x1, rows[i].x);
    EXPECT_EQ(drawing.commands[i].y1, rows[i].y);
  }
  // The position is set for every line, printed or not.
  EXPECT_EQ(boardPic.CurrentX, 9 * 996 + 5.0F);
  EXPECT_EQ(boardPic.CurrentY, 9 * 996 + 25.0F);
}

}  // namespace
}  // namespace fiar
