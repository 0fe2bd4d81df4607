#include <gtest/gtest.h>

#include <string_view>
#include <tuple>
#include <vector>

#include "support/game.h"

namespace fiar {
namespace {

using Rows = std::vector<std::string_view>;

/// A board of 10 x 10 whose upper left corner is drawn in rows: '1' and '2' are stones, 'H' and 'C' those of
/// the human's or the computer's marked line, all else is empty.
Board boardOf(const Rows& rows) {
  Board board = test::emptyBoard(10);
  int row = 0;
  for (const std::string_view signs : rows) {
    int column = 0;
    for (const char sign : signs) {
      if (sign == '1' || sign == 'H') board.board(column, row) = kHuman;
      if (sign == '2' || sign == 'C') board.board(column, row) = kComputer;
      if (sign == 'H' || sign == 'C') board.winMarks(column, row) = board.board(column, row);
      ++column;
    }
    ++row;
  }
  return board;
}

TEST(Victory, MarksTheFirstLineInScanOrder) {
  const std::tuple<const char*, double, Rows> cases[] = {
      {"four at the edge", kNobody, {"......1111", "1", "1", "1", "1"}},
      {"a gap", kNobody, {"1.1111"}},
      {"a line over the right edge", kNobody, {"........11", "111"}},
      {"a line over the lower edge", kNobody, {".1", "", "", "", "", "", "1", "1", "1", "1"}},
      {"horizontal in the corner", kHuman, {".....HHHHH"}},
      {"vertical", kComputer, {"C", "C", "C", "C", "C"}},
      {"falling", kComputer, {"C", ".C", "..C", "...C", "....C"}},
      {"six", kHuman, {".HHHHH1"}},
      {"both sides: the earlier column", kComputer, {".11111", "CCCCC"}},
      {"both sides: the earlier row", kHuman, {"HHHHH", "22222"}},
      {"two lines of one side", kHuman, {"HHHHH", "1", "1", "1", "1"}},
      {"rising to the top, before horizontal", kHuman, {"....H", "...H", "..H", ".H", "H1111"}},
  };
  for (const auto& [name, winner, rows] : cases) {
    SCOPED_TRACE(name);
    test::RunningGame running;
    Board& board = running.game = boardOf(rows);
    const Grid marks = board.winMarks;
    resetGrid(board, board.winMarks);
    board.winMarks(9, 9) = kHuman;  // left from the game before
    board.player = kHuman;
    running.window.checkForVictory();
    EXPECT_EQ(board.winMarks, marks);
    EXPECT_EQ(board.player, winner == kNobody ? kHuman : kNobody);
    EXPECT_EQ(board.score[0] + 2 * board.score[1], winner);
  }
}

TEST(Victory, RewardsTenToNilOnlyAndForGood) {
  for (const bool computerHasWonOnce : {false, true}) {
    test::RunningGame running;
    running.game = boardOf({});
    const auto win = [&](std::string_view line) {
      running.game.board = boardOf({line}).board;
      running.window.checkForVictory();
      return running.window.Picture2.Picture.resource == u"PICTURE3";
    };
    if (computerHasWonOnce) win("22222");
    for (int wins = 1; wins <= 12; ++wins) EXPECT_EQ(win("11111"), wins >= 10 && !computerHasWonOnce) << wins;
    EXPECT_EQ(win("22222"), !computerHasWonOnce);
  }
}

}  // namespace
}  // namespace fiar
