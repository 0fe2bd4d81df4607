#include "board/victory.h"

#include <gtest/gtest.h>

#include "support/boards.h"
#include "support/fake_platform.h"

namespace fiar {
namespace {

struct Display {
  test::FakeRegionalFormat regional;
  std::array<Label, 2> scoreLabel;
  PictureBox Picture2;
  PictureBox Picture3;

  Display() {
    for (Label& label : scoreLabel) label.Caption = u"0";
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
    for (int k = 0; k < 5 && line.winner != kNobody; ++k)
      marks(line.column + k * line.dx, line.row + k * line.dy) = line.winner;
    Display display;
    display.check(board);
    EXPECT_EQ(board.winMarks, marks);
    EXPECT_EQ(board.player, line.winner == kNobody ? kHuman : kNobody);
    for (const std::size_t side : {0U, 1U}) {
      const bool won = line.winner == static_cast<double>(side + 1);
      EXPECT_EQ(board.score[side], won ? 1 : 0);
      EXPECT_EQ(display.scoreLabel[side].Caption, won ? u"1" : u"0");
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
      EXPECT_EQ(display.Picture2.Picture.resource, rewarded ? u"REWARD" : u"") << wins;
    }
    EXPECT_EQ(display.scoreLabel[0].Caption, u"12");
    display.check(computer);
    EXPECT_EQ(display.Picture2.Picture.resource, computerHasWonOnce ? u"" : u"REWARD");
  }
}

}  // namespace
}  // namespace fiar
