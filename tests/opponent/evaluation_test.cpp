#include "opponent/evaluation.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "support/boards.h"
#include "support/loaded_toolkit.h"
#include "support/obvious_evaluation.h"

namespace fiar {
namespace {

struct Evaluation : testing::Test, test::LoadedToolkit {
  void evaluate(Board& board) {
    CalcUtezi2(board.player, board, weights);
    CalcUtezi2(3 - board.player, board, weights);
  }

  /// Both evaluations of random boards must agree exactly, also for sides that do not exist and when the
  /// grids are not cleared between passes.
  void expectAgreement(unsigned seed, double share) {
    std::mt19937 random(seed);
    for (const auto& [size, boards] : {std::pair{10, 1800}, {15, 160}, {20, 40}, {30, 20}}) {
      for (int i = 0; i < static_cast<int>(boards * share); ++i) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", board " << i << " of size " << size);
        Board board = test::emptyBoard(size);
        test::scatterStones(board, random, 1 + static_cast<unsigned>(random() % 8));
        board.player = static_cast<double>(1 + random() % 2);
        Board obvious = board;
        std::vector<double> sides{board.player, 3 - board.player};
        if (i % 8 == 0) sides.insert(sides.end(), {0, 3, board.player, 3 - board.player});
        for (const double side : sides) {
          CalcUtezi2(side, board, weights);
          test::obviousEvaluation(side, obvious, toolkit);
        }
        ASSERT_EQ(board.attackWeights, obvious.attackWeights);
        ASSERT_EQ(board.defenceWeights, obvious.defenceWeights);
      }
    }
  }

  PatternWeights weights{toolkit.variables(), machine.regional};
};

TEST_F(Evaluation, MarksWhatIsAboveAMillionOnly) {
  toolkit.variables().setVar(u"0001P0000", u"0");
  for (const auto& [weight, attack] : {std::pair{u"100000", 1e6}, {u"100000.1", 1e8}}) {
    toolkit.variables().setVar(u"0000P1000", weight);
    Board board = test::boardOf({"  1"});
    board.player = kHuman;
    evaluate(board);
    EXPECT_EQ(board.attackWeights(1, 0), attack);
  }
}

TEST_F(Evaluation, AgreesWithTheObviousWayAlsoAfterAnyChangeOfTheStore) {
  ASSERT_NO_FATAL_FAILURE(expectAgreement(20260314, 1));
  // Weights whose sums depend on the order, weights that differ from their mirror image's, texts that are no
  // numbers, names in the other letter case, and an entry that is emptied.
  for (int n = 0; n < kPatternCount; ++n) toolkit.variables().setVar(patternKey(n), 0.1 * n + 0.37);
  ASSERT_NO_FATAL_FAILURE(expectAgreement(1, 0.05));
  toolkit.variables().setVar(u"0000p1000", u"50000.5");
  toolkit.variables().setVar(u"0001P0000", u"-70");
  toolkit.variables().setVar(u"0010P0000", u"");
  toolkit.variables().setVar(u"0100P0000", u"many");
  ASSERT_NO_FATAL_FAILURE(expectAgreement(2, 0.05));
}

TEST_F(Evaluation, ReadsTheStoreOnceForAllMoves) {
  Board board = test::emptyBoard(30);
  board.player = kHuman;
  machine.regional.asked = 0;
  for (int move = 0; move < 10; ++move) evaluate(board);
  EXPECT_EQ(machine.regional.asked, kPatternCount);
}

TEST_F(Evaluation, NeedsNoTableButABoardThatItCanHold) {
  Toolkit empty(machine.platform);
  PatternWeights none(empty.variables(), machine.regional);
  Board board = test::boardOf({"1"});
  board.player = kHuman;
  CalcUtezi2(kHuman, board, none);
  EXPECT_EQ(board.attackWeights, test::emptyBoard(10).attackWeights);
  board = test::emptyBoard(kLargestBoard + 1);
  EXPECT_THROW(evaluate(board), std::length_error);
}

}  // namespace
}  // namespace fiar
