#include "board/victory.h"

#include <gtest/gtest.h>

#include <string>

#include "support/boards.h"

namespace fiar {
namespace {

struct Display {
  std::array<Label, 2> scoreLabel;
  PictureBox Picture2;
  PictureBox Picture3;

  Display() {
    for (Label& label : scoreLabel) label.Caption = u"0";
    Picture2.Picture = {u"FIRST"};
    Picture3.Picture = {u"REWARD"};
  }
  void check(Board& board) {
    checkForVictory(board, {scoreLabel, Picture2, Picture3, systemRegionalFormat()});
  }
};

/// The marked cells as "column,row" in scan order.
std::string marksOf(const Board& board) {
  std::string marks;
  for (int column = 0; column < board.winMarks.columns(); ++column) {
    for (int row = 0; row < board.winMarks.rows(); ++row) {
      if (board.winMarks(column, row) == 0) continue;
      marks += (marks.empty() ? "" : " ") + std::to_string(column) + "," + std::to_string(row);
    }
  }
  return marks;
}

struct Case {
  const char* name;
  std::vector<std::string_view> rows;
  double winner;
  const char* marks;
};

TEST(Victory, FindsTheFirstLineInScanOrder) {
  const std::vector<Case> cases{
      {"empty", {}, 0, ""},
      {"four at the edge", {"......1111", "1", "1", "1", "1"}, 0, ""},
      {"a gap", {"111.11"}, 0, ""},
      {"a line over the edge is none", {"........11", "111"}, 0, ""},
      {"horizontal in the corner", {".....11111"}, 1, "5,0 6,0 7,0 8,0 9,0"},
      {"vertical", {"2", "2", "2", "2", "2"}, 2, "0,0 0,1 0,2 0,3 0,4"},
      {"rising to the top row", {"....1", "...1", "..1", ".1", "1"}, 1, "0,4 1,3 2,2 3,1 4,0"},
      {"falling", {"2", ".2", "..2", "...2", "....2"}, 2, "0,0 1,1 2,2 3,3 4,4"},
      {"six: the first five", {".111111"}, 1, "1,0 2,0 3,0 4,0 5,0"},
      {"both sides: the earlier column", {".11111", "22222"}, 2, "0,1 1,1 2,1 3,1 4,1"},
      {"both sides: the earlier row", {"11111", "22222"}, 1, "0,0 1,0 2,0 3,0 4,0"},
      {"two lines of one side: one marked", {"11111", "1", "1", "1", "1"}, 1, "0,0 1,0 2,0 3,0 4,0"},
      {"rising before horizontal", {"....1", "...1", "..1", ".1", "11111"}, 1, "0,4 1,3 2,2 3,1 4,0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Board board = test::boardOf(c.rows);
    board.player = kHuman;
    board.winMarks(9, 9) = 1;  // left from the game before
    Display display;
    display.check(board);
    EXPECT_EQ(marksOf(board), c.marks);
    EXPECT_EQ(board.player, c.winner == 0 ? kHuman : kNobody);
    EXPECT_EQ(board.score[0], c.winner == 1 ? 1 : 0);
    EXPECT_EQ(board.score[1], c.winner == 2 ? 1 : 0);
    EXPECT_EQ(display.scoreLabel[0].Caption, c.winner == 1 ? u"1" : u"0");
    EXPECT_EQ(display.scoreLabel[1].Caption, c.winner == 2 ? u"1" : u"0");
    for (std::size_t k = 0; k < 5 && c.winner != 0; ++k) {
      const int column = c.marks[4 * k] - '0';
      const int row = c.marks[4 * k + 2] - '0';
      EXPECT_EQ(board.winMarks(column, row), c.winner);
    }
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
      EXPECT_EQ(display.Picture2.Picture.resource, rewarded ? u"REWARD" : u"FIRST") << wins;
    }
    EXPECT_EQ(display.scoreLabel[0].Caption, u"12");
    display.check(computer);
    EXPECT_EQ(display.Picture2.Picture.resource, computerHasWonOnce ? u"FIRST" : u"REWARD");
  }
}

}  // namespace
}  // namespace fiar
