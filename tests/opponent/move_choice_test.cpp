#include "opponent/move_choice.h"

#include <gtest/gtest.h>

#include "opponent/weight_overlay.h"
#include "support/boards.h"
#include "support/fake_platform.h"

namespace fiar {
namespace {

struct MoveChoice : testing::Test {
  CellPoint play() {
    playNextMove(board, clock, random, [this] { ++newGames; });
    return board.lastMove;
  }

  Board board = test::emptyBoard(10);
  test::FakeClock clock;
  test::FakeRandom random;
  PictureBox boardPic;
  int newGames = 0;
};

TEST_F(MoveChoice, DrawsOneOfTheBestCellsInTheOrderOfColumnsThenRows) {
  const struct {
    std::vector<std::pair<int, int>> best;
    double drawn;
    CellPoint expected;
  } rows[] = {{{}, 0, {0, 0}},
              {{}, 0.011, {0, 1}},
              {{}, 0.5, {4, 9}},
              {{}, 0.9999, {9, 9}},
              {{{3, 7}}, 0.9999, {3, 7}},
              {{{4, 1}, {2, 8}, {4, 5}}, 0.33, {2, 8}},
              {{{4, 1}, {2, 8}, {4, 5}}, 0.34, {4, 1}},
              {{{4, 1}, {2, 8}, {4, 5}}, 0.67, {4, 5}},
              {{{4, 1}, {2, 8}}, 1 - 0x1p-53, {4, 1}}};
  clock.seconds = 1000;
  for (const auto& [best, drawn, expected] : rows) {
    SCOPED_TRACE(drawn);
    board = test::emptyBoard(10);
    board.player = kComputer;
    for (const auto& [column, row] : best) {
      board.attackWeights(column, row) = 10;
      board.defenceWeights(column, row) = 5;
      board.attackWeights(6, 6) = 14;
    }
    // A taken cell does not count, whatever its weight.
    board.board(5, 5) = kHuman;
    board.attackWeights(5, 5) = 1e9;
    random.script = {0.25, drawn};
    random.seeds.clear();
    EXPECT_EQ(play(), expected);
    EXPECT_EQ(board.board(roundToEven(expected.x), roundToEven(expected.y)), kComputer);
    EXPECT_EQ(board.player, kComputer);
    EXPECT_EQ(random.seeds, (std::vector<double>{1000, 1000 * 0.25 * 1'000'000}));
  }
  EXPECT_EQ(newGames, 0);
}

TEST_F(MoveChoice, ABoardWithNothingToPlayStartsANewGameAndIsNotWritten) {
  // Full, or with nothing but cells that are worth less than nothing.
  for (const double stone : {kHuman, kNobody}) {
    for (int cell = 0; cell < 100; ++cell) {
      board.board(cell / 10, cell % 10) = stone;
      board.attackWeights(cell / 10, cell % 10) = -1;
    }
    const Board before = board;
    EXPECT_EQ(play(), before.lastMove);
    EXPECT_EQ(std::exchange(newGames, 0), 1);
    EXPECT_EQ(board.board, before.board);
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
  const std::pair<TextView, float> rows[] = {{u"100000000", 5}, {u"100000000", 25}, {u"12000", 996 + 25}};
  const auto& drawing = boardPic.drawing();
  ASSERT_EQ(drawing.commands.size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(drawing.text(drawing.commands[i]), rows[i].first);
    EXPECT_EQ(drawing.commands[i].x1, 5);
    EXPECT_EQ(drawing.commands[i].y1, rows[i].second);
  }
  // The position is set for every line, printed or not.
  EXPECT_EQ(boardPic.CurrentX, 9 * 996 + 5.0F);
  EXPECT_EQ(boardPic.CurrentY, 9 * 996 + 25.0F);
}

}  // namespace
}  // namespace fiar
