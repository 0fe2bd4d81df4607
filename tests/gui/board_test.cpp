// Games on the board, played with the mouse and read off the screen.

#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <algorithm>
#include <array>

#include "app/mainFrm.h"
#include "gui/support/game.h"
#include "support/fake_platform.h"

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

/// Checks a game that has ended: five stones of the winner in a line, and nothing more is played.
void expectWon(const Game& game, char winner) {
  const Position position = game.position();
  const std::vector<Cell> line = cellsOf(position, winner);
  ASSERT_EQ(line.size(), 5U) << position;
  const Cell step{line[1].column - line[0].column, line[1].row - line[0].row};
  EXPECT_LE(std::max(std::abs(step.column), step.row), 1) << position;
  for (std::size_t i = 2; i < line.size(); ++i) {
    EXPECT_EQ(line[i], (Cell{line[i - 1].column + step.column, line[i - 1].row + step.row})) << position;
  }
  EXPECT_TRUE(cellsOf(position, winner == 'R' ? 'B' : 'R').empty()) << position;
  EXPECT_TRUE(eventually([&] { return game.startIsShown(); }));

  const std::vector<Cell> empty = cellsOf(position, '.');
  screen().click(game.centreOf(empty.front()));
  game.pointAt(empty.back(), kBlack);
  EXPECT_EQ(game.position(), position);
}

TEST(WonGame, OfTheComputerIsMarkedAndCountedAndStartOpensTheNext) {
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
  expectWon(game, 'B');
  EXPECT_EQ(game.scores(), (std::vector<std::string>{"0", "1"}));

  game.pressStart();
  EXPECT_TRUE(eventually([&] { return stones(game.position()) == 1; })) << game.position();
  EXPECT_EQ(cellsOf(game.position(), 'b').size(), 1U);
}

/// Finds moves that beat the computer: it plays on from each good one, for both sides as the computer plays.
class Adviser {
public:
  Adviser() {
    machine_.resources.loadRealOnes = true;
    form_.form.Load();
  }

  Cell bestMove(const Position& position, int size) {
    constexpr std::size_t kCandidates = 8;
    board_.boardCols = board_.boardRows = size;
    resetGrid(board_, board_.board);
    for (const Cell cell : cellsOf(position, 'r')) board_.board(cell.column, cell.row) = kHuman;
    for (const Cell cell : cellsOf(position, 'b')) board_.board(cell.column, cell.row) = kComputer;
    evaluate(kHuman);
    std::vector<Cell> cells = cellsOf(position, '.');
    std::stable_sort(cells.begin(), cells.end(),
                     [&](Cell one, Cell other) { return scoreOf(one) > scoreOf(other); });
    cells.resize(std::min(cells.size(), kCandidates));
    const Board now = board_;
    const auto valueOf = [&](Cell cell) {
      board_ = now;
      board_.board(cell.column, cell.row) = kHuman;
      return playOn();
    };
    std::vector<int> values;
    std::transform(cells.begin(), cells.end(), std::back_inserter(values), valueOf);
    return cells.at(
        static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin()));
  }

private:
  /// How good the end is for the human; the sooner, the better or worse.
  int playOn() {
    constexpr int kTurns = 20;
    for (int turnsLeft = kTurns; turnsLeft > 0; --turnsLeft) {
      evaluate(turnsLeft % 2 == 0 ? kComputer : kHuman);
      form_.playNextMove();
      form_.checkForVictory();
      if (board_.player != kNobody) continue;
      const auto& marks = board_.winMarks;
      for (int cell = 0;; ++cell) {
        const double winner = marks(cell % board_.columns(), cell / board_.columns());
        if (winner != kNobody) return winner == kHuman ? turnsLeft : -turnsLeft;
      }
    }
    return 0;
  }

  /// Scores the empty cells for a side and makes it the one on move.
  void evaluate(double side) {
    board_.player = side;
    resetGrid(board_, board_.attackWeights);
    resetGrid(board_, board_.defenceWeights);
    form_.CalcUtezi2(side);
    form_.CalcUtezi2(side == kHuman ? kComputer : kHuman);
  }

  double scoreOf(Cell cell) const {
    return board_.attackWeights(cell.column, cell.row) + board_.defenceWeights(cell.column, cell.row);
  }

  test::FakePlatform machine_;
  Toolkit toolkit_{machine_.platform};
  mainFrm form_{machine_.platform, toolkit_};
  Board& board_ = form_.game;
};

TEST(WonGame, OfTheHumanIsMarkedAndCounted) {
  // The computer chooses at random among moves that it finds equal, so that a game may go astray.
  constexpr int kMostGames = 5;
  Game game;
  Adviser adviser;
  std::vector<std::string> scores{"0", "0"};
  for (int number = 0; number < kMostGames && scores[0] == "0" && !HasFailure(); ++number) {
    game.pressStart();
    Position position;
    EXPECT_TRUE(eventually([&] {
      position = game.position();
      return stones(position) == number % 2;
    })) << position;
    while (cellsOf(position, 'R').empty() && cellsOf(position, 'B').empty() && !HasFailure()) {
      position = game.play(adviser.bestMove(position, game.size()));
    }
    expectWon(game, cellsOf(position, 'R').empty() ? 'B' : 'R');
    scores = game.scores();
    EXPECT_EQ(std::stoi(scores.at(0)) + std::stoi(scores.at(1)), number + 1);
  }
  EXPECT_EQ(scores[0], "1");
}

}  // namespace
}  // namespace fiar::gui
