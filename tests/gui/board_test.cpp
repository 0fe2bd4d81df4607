// Games on the board, played with the mouse and read off the screen.

#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <algorithm>
#include <array>

#include "gui/support/game.h"

namespace fiar::gui {
namespace {

Screen& screen() {
  return Desktop::get().screen;
}

TEST(Board, IsEmptyAndTakesNoStoneBeforeStart) {
  const Game game;
  EXPECT_EQ(game.size(), 15);
  EXPECT_EQ(game.scores(), (std::vector<std::string>{"0", "0"}));
  screen().click(game.centreOf({7, 7}));
  game.pointAt({9, 9}, kBlack);
  EXPECT_EQ(stones(game.position()), 0) << game.position();
  EXPECT_TRUE(game.startIsShown());
}

TEST(Board, TakesAStoneUnderThePointerAndRefusesATakenCell) {
  Game game;
  game.pressStart();
  game.pointAt({3, 11});
  const Position position = game.play({3, 11});
  EXPECT_EQ(meaningAt(position, {3, 11}), 'r') << position;
  EXPECT_FALSE(game.startIsShown());
  for (const char taken : {'r', 'b'}) {
    screen().click(game.centreOf(cellsOf(position, taken).at(0)));
    game.pointAt({taken == 'r' ? 0 : 14, 0});
    EXPECT_EQ(game.position(), position);
  }
}

TEST(Board, IgnoresOtherButtonsAndClicksWithAModifier) {
  Game game;
  game.pressStart();
  struct Click {
    int button;
    Key modifier;
  };
  int row = 0;
  for (const auto& [button, modifier] : {Click{kRightButton, 0}, Click{kMiddleButton, 0},
                                         Click{kLeftButton, XK_Shift_L}, Click{kLeftButton, XK_Control_L}}) {
    if (modifier != 0) screen().pressKey(modifier);
    screen().click(game.centreOf({7, row++}), button);
    if (modifier != 0) screen().releaseKey(modifier);
    game.pointAt({3, row});
    EXPECT_EQ(stones(game.position()), 0) << "button " << button << ", modifier " << modifier;
  }
}

TEST(Board, TakesNoStoneFromADragOverItsEdge) {
  Game game;
  game.pressStart();
  const Area board = game.board();
  const Area everything = screen().area();
  // To the left and above, what is less than a cell away still counts as the first one.
  const std::array<Point, 4> outside{{{board.right + 5, board.centre().y},
                                      {board.centre().x, board.bottom + 5},
                                      {board.left - 60, board.centre().y},
                                      {everything.right - 1, 0}}};
  for (const Point& target : outside) {
    screen().move(game.centreOf({7, 7}));
    screen().press(kLeftButton);
    screen().move(target);
    screen().release(kLeftButton);
    game.pointAt({6, 6});
    EXPECT_EQ(stones(game.position()), 0) << "released at " << target.x << ", " << target.y;
  }
  // One that comes back is a click where it ends.
  screen().move(game.centreOf({7, 7}));
  screen().press(kLeftButton);
  screen().move(outside[0]);
  screen().move(game.centreOf({2, 3}));
  screen().release(kLeftButton);
  EXPECT_TRUE(eventually([&] { return meaningAt(game.position(), {2, 3}) == 'r'; })) << game.position();
}

class BoardSize : public testing::TestWithParam<int> {};

TEST_P(BoardSize, HasItsLinesAndItsCells) {
  Game game;
  game.chooseSize(GetParam());
  const int last = game.size() - 1;
  game.pointAt({0, 0});
  expectSharpGrid(game);
  EXPECT_EQ(stones(game.position()), 0);
  // The computer may have taken a corner by then.
  for (const Cell corner : {Cell{last, last}, Cell{0, last}, Cell{last, 0}}) {
    if (meaningAt(game.position(), corner) != '.') continue;
    const Position position = game.play(corner);
    EXPECT_EQ(meaningAt(position, corner), 'r') << position;
  }
}

INSTANTIATE_TEST_SUITE_P(All, BoardSize, testing::Values(0, 2, 3));

TEST(BoardSize, StartsANewGameThatTheOtherSideOpens) {
  Game game;
  game.pressStart();
  game.play({4, 4});
  bool humanOpens = true;
  for (const int index : {3, 0, 1, 2}) {
    // Far out: the next board may have no such cell.
    screen().move(game.centreOf({game.size() - 1, game.size() - 1}));
    game.chooseSize(index);
    humanOpens = !humanOpens;
    EXPECT_FALSE(game.startIsShown());
    EXPECT_TRUE(eventually([&] { return stones(game.position()) == (humanOpens ? 0 : 1); }))
        << game.position();
    game.pointAt({2, 5});
    EXPECT_EQ(cellsOf(game.position(), 'b').size(), humanOpens ? 0U : 1U) << game.position();
    game.play(cellsOf(game.position(), '.').at(0));
  }
}

TEST(WonGame, IsMarkedAndCountedAndStartOpensTheNext) {
  Game game;
  game.pressStart();
  Position position = game.position();
  // Every other cell along two edges: that threatens nothing.
  while (cellsOf(position, 'B').empty()) {
    const auto empty = cellsOf(position, '.');
    const auto quiet = std::find_if(empty.begin(), empty.end(),
                                    [](Cell cell) { return cell.column % 2 == 0 && cell.row % 14 == 0; });
    ASSERT_NE(quiet, empty.end());
    position = game.play(*quiet);
  }
  EXPECT_EQ(game.scores(), (std::vector<std::string>{"0", "1"}));
  EXPECT_TRUE(cellsOf(position, 'R').empty()) << position;
  const std::vector<Cell> line = cellsOf(position, 'B');
  ASSERT_EQ(line.size(), 5U) << position;
  const Cell step{line[1].column - line[0].column, line[1].row - line[0].row};
  EXPECT_LE(std::max(std::abs(step.column), step.row), 1) << position;
  for (std::size_t i = 2; i < line.size(); ++i) {
    EXPECT_EQ(line[i], (Cell{line[i - 1].column + step.column, line[i - 1].row + step.row})) << position;
  }

  // Nothing more is played until "Start", which lets the other side open.
  EXPECT_TRUE(eventually([&] { return game.startIsShown(); }));
  const std::vector<Cell> empty = cellsOf(position, '.');
  screen().click(game.centreOf(empty.front()));
  game.pointAt(empty.back(), kBlack);
  EXPECT_EQ(game.position(), position);
  game.pressStart();
  EXPECT_TRUE(eventually([&] { return stones(game.position()) == 1; })) << game.position();
  EXPECT_EQ(cellsOf(game.position(), 'b').size(), 1U);
}

}  // namespace
}  // namespace fiar::gui
