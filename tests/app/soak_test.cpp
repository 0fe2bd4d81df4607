#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <random>
#include <string>

#include "support/running_game.h"

namespace fiar {
namespace {

/// What the environment says, else the default.
unsigned long setting(const char* name, unsigned long fallback) {
  const char* text = std::getenv(name);
  return text == nullptr ? fallback : std::stoul(text);
}

/// Games by random events alone. After every event the state must make sense.
class Soak : public testing::Test, protected test::RunningGame {
protected:
  void anyEvent() {
    const unsigned kind = below(100);
    const auto size = static_cast<unsigned>(game.columns());
    if (kind < 45) return tick();
    if (kind < 90) return click(below(size), below(size));
    if (kind < 94) return dragAnywhere();
    if (kind < 96) return release(static_cast<int>(below(5)), static_cast<int>(below(8)));
    if (kind < 98) {
      if (window.Command1.Visible) start();
    } else if (kind < 99) {
      window.Check1.Value = 1 - window.Check1.Value;
      window.Check1.Click();
    } else if (below(10) == 0) {
      window.Combo1.setListIndex(static_cast<int>(below(4)));
    } else {
      disturbTheClock();
    }
  }

  /// It jumps, most often to just before midnight, and then runs, stands still or goes back.
  void disturbTheClock() {
    machine.clock.seconds = below(3) == 0 ? below(86400) : 86399.9;
    machine.clock.pace = std::array{1, 1, 0, -1}[below(4)];
  }

  void expectSense() const {
    const int size = game.columns();
    ASSERT_TRUE(size == 10 || size == 15 || size == 20 || size == 30) << size;
    for (const Grid* grid : {&game.board, &game.winMarks, &game.attackWeights, &game.defenceWeights}) {
      ASSERT_EQ(grid->columns(), size);
      ASSERT_EQ(grid->rows(), size);
    }
    ASSERT_EQ(game.boardCols, game.boardRows);
    ASSERT_TRUE(game.player == kNobody || game.player == kHuman || game.player == kComputer);
    // Sides take turns, whoever opens and whoever's stone a click placed.
    ASSERT_LE(std::abs(stones(kHuman) - stones(kComputer)), 1);
    ASSERT_EQ(stones(kHuman) + stones(kComputer) + stones(kNobody), size * size);
    int marks = 0;
    for (int column = 0; column < size; ++column) {
      for (int row = 0; row < size; ++row) {
        if (game.winMarks(column, row) == kNobody) continue;
        ++marks;
        ASSERT_EQ(game.winMarks(column, row), game.board(column, row));
      }
    }
    ASSERT_TRUE(marks == 0 || (marks == kWinningLength && game.player == kNobody)) << marks;
    for (const std::size_t side : {0U, 1U}) {
      ASSERT_EQ(toUtf8(window.scoreLabel[side].Caption), std::to_string(roundToEven(game.score[side])));
    }
  }

  unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
  void dragAnywhere() {
    const auto anywhere = [this] { return static_cast<float>(below(40'000)) - 15'000; };
    window.boardPic.MouseMove(kLeftButton, 0, anywhere(), anywhere());
    release();
  }

  const unsigned long seed = setting("FIAR_SOAK_SEED", 20260314);

private:
  std::mt19937 random_{static_cast<std::mt19937::result_type>(seed)};
};

TEST_F(Soak, RandomEventsLeaveTheGameInOrder) {
  const unsigned long events = setting("FIAR_SOAK_EVENTS", 120'000);
  load();
  std::mt19937 draws(7);
  for (unsigned long i = 0; i < events; ++i) {
    machine.random.afterwards = static_cast<double>(draws()) / 4294967296.0;
    anyEvent();
    expectSense();
    if (HasFatalFailure()) FAIL() << "after event " << i << " of seed " << seed;
  }
  EXPECT_GT(game.score[0] + game.score[1], static_cast<double>(events) / 400);
}

}  // namespace
}  // namespace fiar
