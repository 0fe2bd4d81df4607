// The whole game without a mouse.

#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <algorithm>

#include "gui/support/game.h"

namespace fiar::gui {
namespace {

Screen& screen() {
  return Desktop::get().screen;
}

/// What has the keyboard: the text of a button, or "board" or "list".
std::string focused(const Game& game) {
  const auto windows = game.windows();
  const auto found =
      std::find_if(windows.begin(), windows.end(), [](const WindowInfo& window) { return window.focused; });
  if (found == windows.end()) return {};
  if (found->kind == "ComboBox") return "list";
  return found->area == game.board() ? "board" : found->text;
}

/// Presses Tab until something has the keyboard.
void tabTo(const Game& game, const std::string& target) {
  for (int presses = 0; focused(game) != target && presses < 4; ++presses) {
    const std::string before = focused(game);
    screen().type(XK_Tab);
    EXPECT_TRUE(eventually([&] { return focused(game) != before; })) << "Tab does not leave " << before;
  }
  EXPECT_EQ(focused(game), target);
}

TEST(Keyboard, TabGoesRoundAllControls) {
  const Game game;
  tabTo(game, "list");
  for (const char* next : {"Start", "board", "Sound", "list"}) {
    screen().type(XK_Tab);
    EXPECT_TRUE(eventually([&] { return focused(game) == next; })) << focused(game) << " instead of " << next;
  }
  for (const char* next : {"Sound", "board", "Start"}) {
    screen().pressKey(XK_Shift_L);
    screen().type(XK_Tab);
    screen().releaseAll();
    EXPECT_TRUE(eventually([&] { return focused(game) == next; })) << focused(game) << " instead of " << next;
  }
}

TEST(Keyboard, StartsAndPlaysAGame) {
  Game game;
  tabTo(game, "Start");
  screen().type(XK_space);
  EXPECT_TRUE(eventually([&] { return !game.startIsShown() && focused(game) == "board"; })) << focused(game);

  // The keys go on from where the mouse has been, and the mouse that rests does not draw the pointer back.
  game.pointAt({5, 6});
  Cell cell{5, 6};
  struct Step {
    Key key;
    int columns;
    int rows;
  };
  for (const auto& [key, columns, rows] : {Step{XK_Left, -1, 0}, Step{XK_Left, -1, 0}, Step{XK_Down, 0, 1},
                                           Step{XK_Right, 1, 0}, Step{XK_Up, 0, -1}}) {
    screen().type(key);
    cell = {cell.column + columns, cell.row + rows};
    EXPECT_TRUE(eventually([&] { return game.ringIsAt(cell, kLightRed); }))
        << cell.column << ", " << cell.row;
  }
  screen().type(XK_space);
  EXPECT_TRUE(eventually([&] { return stones(game.position()) == 2; })) << game.position();
  EXPECT_EQ(meaningAt(game.position(), cell), 'r') << game.position();

  // A taken cell, then the first free one above it.
  screen().type(XK_Return);
  do {
    screen().type(XK_Up);
    --cell.row;
    EXPECT_TRUE(eventually([&] { return game.ringIsAt(cell, kLightRed); }));
  } while (meaningAt(game.position(), cell) != '.');
  EXPECT_EQ(stones(game.position()), 2) << game.position();
  screen().type(XK_Return);
  EXPECT_TRUE(eventually([&] { return stones(game.position()) == 4; })) << game.position();
  EXPECT_EQ(meaningAt(game.position(), cell), 'r') << game.position();
}

TEST(Keyboard, ChoosesTheSizeAndSwitchesTheSound) {
  Game game;
  // The cell of the pointer lies off the smaller board.
  game.pointAt({14, 13}, kBlack);
  tabTo(game, "list");
  screen().type(XK_Up);
  EXPECT_TRUE(eventually([&] { return game.control("ComboBox").text == "10 x 10" && !game.startIsShown(); }));
  game.locate();
  EXPECT_TRUE(eventually([&] { return game.position().find_first_not_of(".\n") == Position::npos; }))
      << game.position();
  screen().click(screen().pointer());
  EXPECT_TRUE(eventually([&] { return stones(game.position()) == 2; })) << game.position();

  tabTo(game, "Sound");
  for (const bool on : {false, true}) {
    screen().type(XK_space);
    EXPECT_TRUE(eventually([&] { return game.control("Button", "Sound").checked == on; }));
  }
}

}  // namespace
}  // namespace fiar::gui
