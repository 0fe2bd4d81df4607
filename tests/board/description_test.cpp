#include "board/description.h"

#include <gtest/gtest.h>

#include "support/boards.h"
#include "support/fake_platform.h"

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
      {kNobody, {0, 0}, {0, 0}, kNobody, u"Column 1, row 1, red"},
      {kHuman, {1, 0}, {0, 0}, kNobody, u"Column 2, row 1, blue"},
      {kHuman, {9, 8}, {0, 0}, kNobody, u"Column 10, row 9, empty"},
      {kHuman, {10, 8}, {0, 0}, kNobody, u"Outside the board"},
      {kComputer, {9, 8}, {0, 0}, kNobody, u"Column 10, row 9, empty"},
      {kHuman, {9, 8}, {1, 0}, kNobody, u"Blue to column 2, row 1. Column 10, row 9, empty"},
      {kHuman, {9, 8}, {1, 0}, kNobody, u"Blue to column 2, row 1. Column 10, row 9, empty"},
      {kHuman, {0, 0}, {1, 0}, kNobody, u"Column 1, row 1, red"},
      {kHuman, {9, 8}, {1, 0}, kNobody, u"Column 10, row 9, empty"},
      {kHuman, {9, 8}, {2, 0}, kNobody, u"Blue to column 3, row 1. Column 10, row 9, empty"},
      {kNobody, {9, 8}, {2, 0}, kComputer, u"The computer won"},
      {kNobody, {9, 7}, {2, 0}, kComputer, u"Column 10, row 8, empty"},
      {kHuman, {9, 7}, {9, 9}, kNobody, u"Column 10, row 8, empty"},
      {kNobody, {9, 7}, {9, 9}, kHuman, u"You won"},
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

}  // namespace
}  // namespace fiar
