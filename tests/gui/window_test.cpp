// The window among others: its sizes, its end, and monitors of other resolutions.

#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <algorithm>
#include <cmath>

#include "gui/support/game.h"

namespace fiar::gui {
namespace {

// Of the Windows API.
constexpr unsigned kClose = 0x0010;          // WM_CLOSE
constexpr unsigned kSystemCommand = 0x0112;  // WM_SYSCOMMAND
constexpr int kMinimise = 0xF020;
constexpr int kMaximise = 0xF030;
constexpr int kRestore = 0xF120;

Desktop& desktop() {
  return Desktop::get();
}

void command(const Game& game, int what) {
  desktop().probe.post(game.window(), kSystemCommand, what);
}

/// Checks that the form fills the window as far as its proportions allow, and that the pointer hits its
/// cells.
void expectFittedAndPlayable(Game& game) {
  constexpr double kFormWidth = 12060;
  constexpr double kFormHeight = 10170;
  constexpr double kBoardWidth = 9960;
  const Area inside = game.window().area;
  const double scale = std::min(inside.width() / kFormWidth, inside.height() / kFormHeight);
  EXPECT_TRUE(eventually([&] {
    game.locate();
    return std::abs(game.board().width() - kBoardWidth * scale) < 3;
  })) << game.board().width()
      << " pixels of board in a window of " << inside.width() << " x " << inside.height();
  EXPECT_TRUE(inside.contains(game.board()));
  const int last = game.size() - 1;
  for (const Cell cell : {Cell{last, 0}, Cell{0, last}, Cell{last, last}, Cell{0, 0}}) game.pointAt(cell);
  expectSharpGrid(game);
}

TEST(Window, KeepsTheFormsProportionsWhenItIsResizedAndMaximised) {
  Game game;
  game.pressStart();
  const Area first = game.window().area;
  struct Growth {
    int right;
    int down;
  };
  for (const Growth& by : {Growth{200, 0}, Growth{-300, 60}, Growth{-77, -211}, Growth{301, 252}}) {
    const Area before = game.window().area;
    const Area frame = desktop().screen.frameAt(before.centre());
    desktop().screen.drag({frame.right - 2, frame.bottom - 2},
                          {frame.right - 2 + by.right, frame.bottom - 2 + by.down});
    EXPECT_TRUE(eventually([&] { return game.window().area.width() == before.width() + by.right; }));
    expectFittedAndPlayable(game);
  }

  command(game, kMaximise);
  const int screenWidth = desktop().screen.area().width();
  EXPECT_TRUE(eventually([&] { return game.window().area.width() > screenWidth - 50; }));
  expectFittedAndPlayable(game);
  const Position position = game.play({14, 14});
  EXPECT_EQ(meaningAt(position, {14, 14}), 'r') << position;

  command(game, kRestore);
  EXPECT_TRUE(eventually([&] { return game.window().area.width() < screenWidth - 50; }));
  EXPECT_NE(game.window().area, first);
  game.locate();
  EXPECT_TRUE(eventually([&] { return game.position() == position; })) << game.position();
}

TEST(Window, DoesNotBecomeTooSmallToPlay) {
  Game game;
  game.pressStart();
  const Area before = game.window().area;
  // The window manager that Wine has here knows no smallest size: this goes by Windows alone.
  desktop().probe.resize(game.window(), 20, 20);
  EXPECT_TRUE(eventually([&] { return game.window().area.width() < before.width(); }));
  expectFittedAndPlayable(game);
  EXPECT_GT(game.board().width(), before.width() / 3);
}

TEST(Window, ShowsTheSameGameAfterItWasMinimised) {
  Game game;
  game.pressStart();
  const Position position = game.play({7, 7});
  const Area before = game.window().area;
  command(game, kMinimise);
  EXPECT_TRUE(eventually([&] { return game.window().minimised && game.position() != position; }));
  command(game, kRestore);
  EXPECT_TRUE(eventually([&] { return game.window().area == before && game.position() == position; }))
      << game.position();
  game.play({0, 14});
}

TEST(Window, TakesTheSizeThatAnotherMonitorAsksFor) {
  Game game;
  game.pressStart();
  for (const int dotsPerInch : {144, 120, 96}) {
    constexpr int kCorner = 20;
    const WindowInfo window = game.window();
    const int frameWidth = window.whole.width() - window.area.width();
    const int frameHeight = window.whole.height() - window.area.height();
    const Area suggested{kCorner, kCorner, kCorner + 804 * dotsPerInch / 96 + frameWidth,
                         kCorner + 678 * dotsPerInch / 96 + frameHeight};
    desktop().probe.changeDpi(game.process(), window, dotsPerInch, suggested);
    EXPECT_TRUE(eventually([&] {
      const Area whole = game.window().whole;
      return whole.width() == suggested.width() && whole.height() == suggested.height();
    })) << dotsPerInch;
    expectFittedAndPlayable(game);
  }
}

TEST(Window, EndsTheProgramWhenItIsClosed) {
  Game game;
  game.pressStart();
  game.play({7, 7});
  desktop().screen.pressKey(XK_Alt_L);
  desktop().screen.type(XK_F4);
  desktop().screen.releaseAll();
  EXPECT_EQ(game.exitCode(), 0);
}

TEST(Window, CanBeClosedWhileTheMouseIsDragged) {
  Game game;
  game.pressStart();
  desktop().screen.move(game.centreOf({7, 7}));
  desktop().screen.press(kLeftButton);
  game.pointAt({9, 9});
  desktop().probe.post(game.window(), kClose);
  EXPECT_EQ(game.exitCode(), 0);
}

}  // namespace
}  // namespace fiar::gui
