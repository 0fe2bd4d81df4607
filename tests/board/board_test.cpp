#include <gtest/gtest.h>

#include "board/description.h"
#include "board/victory.h"
#include "support/game.h"

namespace fiar {
namespace {

TEST(BoardDescription, SaysWhereTheRingIsAndWhatHasJustHappened) {
  // Each position follows the one before it.
  const struct {
    double player;
    CellPoint ring;
    CellPoint lastMove;
    double winner;
    TextView text;
  } rows[] = {
      {kHuman, {1, 0}, {0, 0}, kNobody, u"Column 2, row 1, blue"},
      {kHuman, {10, 8}, {0, 0}, kNobody, u"Outside the board"},
      {kComputer, {9, 8}, {1, 0}, kNobody, u"Column 10, row 9, empty"},
      {kHuman, {9, 8}, {1, 0}, kNobody, u"Blue to column 2, row 1. Column 10, row 9, empty"},
      {kHuman, {0, 0}, {1, 0}, kNobody, u"Column 1, row 1, red"},
      {kHuman, {9, 8}, {1, 0}, kNobody, u"Column 10, row 9, empty"},
      {kNobody, {9, 8}, {1, 0}, kHuman, u"You won"},
      {kNobody, {9, 8}, {1, 0}, kHuman, u"You won"},
      {kNobody, {9, 7}, {1, 0}, kHuman, u"Column 10, row 8, empty"},
      {kHuman, {9, 7}, {9, 9}, kNobody, u"Column 10, row 8, empty"},
      {kNobody, {9, 7}, {9, 9}, kComputer, u"The computer won"},
  };
  const test::FakeRegionalFormat regional;
  BoardDescription description(regional);
  Board board = test::boardOf({"122"});
  for (const auto& row : rows) {
    board.player = row.player;
    board.srX = row.ring.x;
    board.srY = row.ring.y;
    board.lastMove = row.lastMove;
    if (row.winner != kNobody) board.score[row.winner == kHuman ? 0 : 1] = 1;
    EXPECT_EQ(description.update(board), row.text) << &row - rows;
  }
}

struct Display {
  test::FakeRegionalFormat regional;
  std::array<Label, 2> scoreLabel;
  PictureBox Picture2;
  PictureBox Picture3;

  Display() {
    scoreLabel[0].Caption = scoreLabel[1].Caption = u"0";
    Picture3.Picture = {u"REWARD"};
  }
  void check(Board& board) { checkForVictory(board, {scoreLabel, Picture2, Picture3, regional}); }
};

TEST(Victory, FindsTheFirstLineInScanOrder) {
  const struct {
    const char* name;
    std::vector<std::string_view> rows;
    double winner = kNobody;
    int column = 0;  ///< where the marked line starts
    int row = 0;
    int dx = 0;  ///< and where it goes
    int dy = 0;
  } cases[] = {
      {"four at the edge", {"......1111", "1", "1", "1", "1"}},
      {"a gap", {"111.11"}},
      {"a line over the right edge is none", {"........11", "111"}},
      {"a line over the lower edge is none", {".1", "", "", "", "", "", "1", "1", "1", "1"}},
      {"horizontal in the corner", {".....11111"}, kHuman, 5, 0, 1, 0},
      {"vertical", {"2", "2", "2", "2", "2"}, kComputer, 0, 0, 0, 1},
      {"falling", {"2", ".2", "..2", "...2", "....2"}, kComputer, 0, 0, 1, 1},
      {"six: the first five", {".111111"}, kHuman, 1, 0, 1, 0},
      {"both sides: the earlier column", {".11111", "22222"}, kComputer, 0, 1, 1, 0},
      {"both sides: the earlier row", {"11111", "22222"}, kHuman, 0, 0, 1, 0},
      {"two lines of one side: one marked", {"11111", "1", "1", "1", "1"}, kHuman, 0, 0, 1, 0},
      {"rising to the top, before horizontal", {"....1", "...1", "..1", ".1", "11111"}, kHuman, 0, 4, 1, -1},
  };
  for (const auto& line : cases) {
    SCOPED_TRACE(line.name);
    Board board = test::boardOf(line.rows);
    board.player = kHuman;
    board.winMarks(9, 9) = 1;  // left from the game before
    Grid marks = test::emptyBoard(10).winMarks;
    for (int k = 0; k < 5; ++k) marks(line.column + k * line.dx, line.row + k * line.dy) = line.winner;
    Display display;
    display.check(board);
    EXPECT_EQ(board.winMarks, marks);
    EXPECT_EQ(board.player, line.winner == kNobody ? kHuman : kNobody);
    EXPECT_EQ(board.score[0] + 2 * board.score[1], line.winner);
  }
}

TEST(Victory, RewardsTenToNilOnlyAndForGood) {
  for (const bool computerHasWonOnce : {false, true}) {
    Display display;
    Board human = test::boardOf({"11111"});
    Board computer = test::boardOf({"22222"});
    if (computerHasWonOnce) display.check(computer);
    for (int wins = 1; wins <= 12; ++wins) {
      display.check(human);
      const bool rewarded = wins >= 10 && !computerHasWonOnce;
      EXPECT_EQ(display.Picture2.Picture.resource, rewarded ? u"REWARD" : u"") << wins;
    }
    display.check(computer);
    EXPECT_EQ(display.Picture2.Picture.resource, computerHasWonOnce ? u"" : u"REWARD");
  }
}

}  // namespace
}  // namespace fiar
