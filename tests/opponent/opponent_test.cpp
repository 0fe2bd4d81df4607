#include <gtest/gtest.h>

#include "opponent/evaluation.h"
#include "opponent/move_choice.h"
#include "opponent/pattern_table.h"
#include "opponent/weight_overlay.h"
#include "support/game.h"

namespace fiar {
namespace {

struct Opponent : testing::Test, test::RunningGame {
  Board board = test::emptyBoard(10);

  Opponent() { load(); }
};

TEST_F(Opponent, ItsTableIsWhatTheGeneratorWritesEachTime) {
  const test::TemporaryFolder folder;
  toolkit.values().applicationFolder = folder.text();
  const std::string shipped = *machine.resources.patternTable;
  const std::string lines = shipped.substr(0, shipped.find('\0')) + "\r\n";
  for (const std::string& expected : {lines, lines + lines}) {
    genUtezi(toolkit);
    EXPECT_EQ(folder.contents(u"spremenljivka.txt"), expected);
  }
}

TEST_F(Opponent, TakesATableThatTheFormatAllowsAndNamesTheResourceOfAnother) {
  // A third column is left out, an empty key is one, and a number may have spaces and decimals.
  using namespace std::string_literals;
  loadPatternTable("0000P0001,7,x\r\n,2\r\n0000P0010, 1.5 \r\n0000P0011,3\0\0z"s, toolkit);
  const std::pair<TextView, TextView> rows[] = {
      {u"0000P0001", u"7"}, {u"", u"2"}, {u"0000P0010", u"1.5"}, {u"0000P0011", u"3"}};
  for (const auto& [key, weight] : rows) EXPECT_EQ(toolkit.variables().getVar(key), weight);
  for (const char* bytes : {"", "0000P0001,", "0000P0001,1\r\n"}) {
    EXPECT_THROW(loadPatternTable(bytes, toolkit), PatternTableError) << bytes;
  }
  EXPECT_EQ(PatternTableError(u"why").message(), u"Resource 102 (the pattern table): why");
}

TEST_F(Opponent, EvaluatesAsTheObviousWayDoesAlsoAfterAnyChangeOfTheStore) {
  VariableStore& store = toolkit.variables();
  PatternWeights weights(store, machine.regional);
  std::mt19937 random(20260314);
  for (int i = 0; i < 200; ++i) {
    SCOPED_TRACE(i);
    // Sums that are just not above the threshold of the markers.
    if (i == 50) store.setVar(u"0000P1000", u"100000");
    if (i == 50) store.setVar(u"0001P0000", u"0");
    // Weights whose sums depend on the order, and that differ from their mirror image's.
    for (int n = 0; n < kPatternCount && i == 100; ++n) store.setVar(patternKey(n), 0.1 * n + 0.37);
    if (i == 120) store.setVar(u"0000p1000", u"50000.5");
    if (i == 140) store.setVar(u"0001P0000", u"-70");
    if (i == 160) store.setVar(u"0010P0000", u"");
    if (i == 180) store.setVar(u"0100P0000", u"many");
    board = test::randomBoard(i % 20 == 0 ? 30 : 10, random, 1 + static_cast<unsigned>(random() % 30));
    board.player = static_cast<double>(1 + random() % 2);
    Board obvious = board;
    // Also for sides that do not exist, and without clearing the grids between passes.
    for (const double side : {board.player, 3 - board.player, 0.0, 3.0, 3 - board.player}) {
      CalcUtezi2(side, board, weights);
      test::obviousEvaluation(side, obvious, toolkit);
    }
    ASSERT_EQ(board.attackWeights, obvious.attackWeights);
    ASSERT_EQ(board.defenceWeights, obvious.defenceWeights);
  }
  board = test::emptyBoard(kLargestBoard + 1);
  EXPECT_THROW(CalcUtezi2(kHuman, board, weights), std::length_error);
}

TEST_F(Opponent, DrawsOneOfTheBestCellsInTheOrderOfColumnsThenRows) {
  // The best cells, the number that is drawn, and the cell that it leads to.
  const std::tuple<std::vector<std::pair<int, int>>, double, CellPoint> rows[] = {
      {{}, 0.011, {0, 1}},
      {{}, 0.5, {4, 9}},
      {{}, 0.9999, {9, 9}},
      {{{3, 7}}, 0.9999, {3, 7}},
      {{{4, 1}, {2, 8}, {4, 5}}, 0.33, {2, 8}},
      {{{4, 1}, {2, 8}, {4, 5}}, 0.34, {4, 1}},
      {{{4, 1}, {2, 8}}, 1 - 0x1p-53, {4, 1}},
  };
  machine.clock.seconds = 1000;
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
    machine.random.script = {0.25, drawn};
    machine.random.seeds.clear();
    playNextMove(board, machine.clock, machine.random, [] { FAIL() << "a new game"; });
    EXPECT_EQ(board.lastMove, expected);
    EXPECT_EQ(board.board(roundToEven(expected.x), roundToEven(expected.y)), kComputer);
    EXPECT_EQ(machine.random.seeds, (std::vector<double>{1000, 1000 * 0.25 * 1'000'000}));
  }
  // Where no cell is worth anything a new game starts.
  board = test::emptyBoard(10);
  for (int cell = 0; cell < 100; ++cell) board.attackWeights(cell / 10, cell % 10) = -1;
  int newGames = 0;
  playNextMove(board, machine.clock, machine.random, [&] { ++newGames; });
  EXPECT_EQ(newGames, 1);
  EXPECT_EQ(board.board, test::emptyBoard(10).board);
}

TEST_F(Opponent, ItsHintsShowTheBestCellsAndTheWeightsAboveAThreshold) {
  PictureBox boardPic;
  board.attackWeights(1, 2) = 10'000;
  hiliteNextMove(board, boardPic);
  board.defenceWeights(1, 2) = 1;
  board.attackWeights(8, 3) = 10'001;
  board.attackWeights(8, 4) = 20'000;
  board.board(8, 4) = kHuman;
  hiliteNextMove(board, boardPic);
  drawutezi(board, boardPic);
  const DrawingList& drawing = boardPic.drawing();
  std::vector<CellPoint> places;
  for (const DrawCommand& command : drawing.commands) places.push_back({command.x1, command.y1});
  // Two rings; the sum; attack and sum twice.
  const std::vector<CellPoint> expected{{1494, 2490}, {8466, 3486}, {1001, 2017}, {7973, 2993},
                                        {7973, 3013}, {7973, 3989}, {7973, 4009}};
  EXPECT_EQ(places, expected);
  EXPECT_EQ(TextView(drawing.characters.data(), drawing.characters.size()), u"1000110001100012000020000");
}

}  // namespace
}  // namespace fiar
