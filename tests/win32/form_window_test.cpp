// Shows a small form in a real window, sends it messages, and looks at what the form was told.

#include "win32/window/form_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "support/allocation_count.h"
#include "support/files.h"
#include "win32/services/events.h"
#include "win32/window/com.h"

namespace fiar::win32 {
namespace {

/// A background with a board of 10 x 10 cells, a button and a list, in the window that shows them.
struct FormWindowTest : testing::Test {
  FormWindowTest() {
    form.Width = background.Width = 3000;
    form.Height = background.Height = 1500;
    board.Left = board.Width = board.Height = 1500;
    board.Container = button.Container = list.Container = box.Container = &background;
    background.BackColor = kGreen;
    box.Top = 400;
    box.Width = list.Width = 1200;
    box.Height = list.Height = 315;
    board.TabStop = true;
    board.KeyStep = 150;
    const auto note = [this](char kind) {
      return [this, kind](int pressed, int shift, float x, float y) {
        kinds += kind;
        last = {pressed, shift, x, y};
      };
    };
    board.MouseMove = note('m');
    board.MouseUp = note('u');
    button.Click = [this] { ++clicks; };
    form.controls = {&background, &list, &button, &box, &board};
    form.timers = {&clock};
    window = std::make_unique<FormWindow>(form, resources);
    window->show(SW_SHOWNORMAL);
  }

  HWND top() const { return window->handle(); }
  HWND inside() const { return GetWindow(top(), GW_CHILD); }
  HWND boardWindow() const { return GetWindow(GetWindow(inside(), GW_CHILD), GW_HWNDLAST); }
  HWND buttonWindow() const { return FindWindowExW(inside(), nullptr, L"Button", nullptr); }
  HWND boxWindow() const { return FindWindowExW(inside(), buttonWindow(), L"Button", nullptr); }
  HWND listWindow() const { return FindWindowExW(inside(), nullptr, L"ComboBox", nullptr); }
  void tick() { SendMessageW(top(), WM_TIMER, 1, 0); }
  void click() { SendMessageW(buttonWindow(), BM_CLICK, 0, 0); }
  void mouse(UINT message, WPARAM keys, int x, int y) {
    SendMessageW(boardWindow(), message, keys, MAKELPARAM(x, y));
  }
  void press(WPARAM key) { SendMessageW(GetFocus(), WM_KEYDOWN, key, 1); }

  ComApartment apartment;
  test::FileResources resources;
  Form form;
  PictureBox background;
  PictureBox board;
  CommandButton button;
  ComboBox list;
  CheckBox box;
  Timer clock;
  std::string kinds;  ///< of all pointer events: "m" for MouseMove, "u" for MouseUp
  struct {
    int button, shift;
    float x, y;
  } last{};  ///< the last one
  int clicks = 0;
  std::unique_ptr<FormWindow> window;
};

/// How many pixels of a window are not black.
std::ptrdiff_t paintedPixels(HWND window) {
  const PixelBuffer pixels(clientSize(window));
  const BitmapView view = pixels.pixels();
  BitBlt(pixels.context(), 0, 0, view.width, view.height, ClientContext(window).get(), 0, 0, SRCCOPY);
  GdiFlush();
  return std::count_if(view.pixels, view.row(view.height), [](Color pixel) { return (pixel & kWhite) != 0; });
}

TEST_F(FormWindowTest, ShowsWhatDiffersAndTouchesNothingElse) {
  constexpr float kCell = 150;
  float column = 3;
  clock.Tick = [&] {
    board.Cls();
    for (float x = 0; x < 1500; x += kCell) board.Line(x, 0, x, 1500, kGreen);
    board.Circle((column + 0.5F) * kCell, 4.5F * kCell, kCell / 2, kGreen);
  };
  SetFocus(boardWindow());
  tick();
  // Black everywhere, so that what is painted afterwards can be told.
  PatBlt(ClientContext(boardWindow()).get(), 0, 0, 10000, 10000, BLACKNESS);
  const std::size_t allocations = test::allocationCount();
  for (int i = 0; i < 100; ++i) tick();
  EXPECT_EQ(test::allocationCount(), allocations);
  EXPECT_EQ(paintedPixels(boardWindow()), 0);
  // A ring that moves by a cell: the pixels of two cells, with the ring's soft edge.
  column = 4;
  tick();
  const int cell = clientSize(boardWindow()).width / 10;
  EXPECT_GT(paintedPixels(boardWindow()), cell * cell);
  EXPECT_LE(paintedPixels(boardWindow()), (2 * cell + 4) * (cell + 4));
}

TEST_F(FormWindowTest, TellsScreenReadersANewNameOnce) {
  static int announced;
  announced = 0;
  const auto count = [](HWINEVENTHOOK, DWORD, HWND, LONG object, LONG, DWORD, DWORD) {
    if (object == OBJID_CLIENT) ++announced;
  };
  constexpr DWORD kEvent = EVENT_OBJECT_NAMECHANGE;
  const HWINEVENTHOOK hook = SetWinEventHook(kEvent, kEvent, nullptr, count, GetCurrentProcessId(), 0, 0);
  board.AccessibleName = u"You won";
  for (int i = 0; i < 2; ++i) tick();
  Win32Events().process();
  UnhookWinEvent(hook);
  EXPECT_EQ(announced, 1);
  EXPECT_EQ(FindWindowExW(inside(), nullptr, nullptr, L"You won"), boardWindow());
}

TEST_F(FormWindowTest, ACheckBoxLiesOnThePictureBelowIt) {
  RedrawWindow(boxWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  const PixelSize pixels = clientSize(boxWindow());
  EXPECT_EQ(GetPixel(ClientContext(boxWindow()).get(), pixels.width - 1, pixels.height / 2), kGreen);
}

TEST_F(FormWindowTest, TheMouseBecomesPointerEventsInTwips) {
  const PixelSize pixels = clientSize(boardWindow());
  for (int i = 0; i < 2; ++i) mouse(WM_MOUSEMOVE, MK_SHIFT, pixels.width - 1, 0);
  EXPECT_EQ(kinds, "m");
  EXPECT_FLOAT_EQ(last.y, static_cast<float>(board.Width / pixels.width / 2));
  EXPECT_EQ(last.shift, kShiftKey);
  // What is pressed inside counts outside, too, until another window takes the mouse away.
  mouse(WM_LBUTTONDOWN, MK_LBUTTON, 10, 10);
  EXPECT_EQ(GetCapture(), boardWindow());
  mouse(WM_MOUSEMOVE, MK_LBUTTON, -20, 10);
  EXPECT_EQ(last.button, kLeftButton);
  mouse(WM_LBUTTONUP, MK_CONTROL, -20, 10);
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(kinds, "mmu");
  EXPECT_LT(last.x, 0);
  EXPECT_EQ(last.button, kLeftButton);
  EXPECT_EQ(last.shift, kCtrlKey);
}

TEST_F(FormWindowTest, AClickHitsThePlaceThatWasLastReported) {
  mouse(WM_MOUSEMOVE, 0, 75, 75);
  SendMessageW(boardWindow(), WM_KEYDOWN, VK_RIGHT, 1);
  const float ring = last.x;
  // The system reports a mouse that rests, too.
  mouse(WM_MOUSEMOVE, 0, 75, 75);
  mouse(WM_LBUTTONDOWN, MK_LBUTTON, 75, 75);
  mouse(WM_LBUTTONUP, 0, 75, 75);
  EXPECT_EQ(kinds, "mmu");
  EXPECT_EQ(last.x, ring);
  // One that has been away has moved, though it comes back to the very place.
  mouse(WM_MOUSELEAVE, 0, 0, 0);
  mouse(WM_MOUSEMOVE, 0, 75, 75);
  EXPECT_EQ(kinds, "mmum");
  // Keys go on from the same column and row when the cells have got another size.
  SendMessageW(boardWindow(), WM_KEYDOWN, VK_RIGHT, 1);
  EXPECT_FLOAT_EQ(last.x, static_cast<float>(8.5 * board.KeyStep));
  board.KeyStep /= 2;
  SendMessageW(boardWindow(), WM_KEYDOWN, VK_RIGHT, 1);
  EXPECT_FLOAT_EQ(last.x, static_cast<float>(9.5 * board.KeyStep));
}

TEST_F(FormWindowTest, KeysMoveThePointerAndClick) {
  constexpr LPARAM kHeld = LPARAM{1} << 30;
  using Key = std::pair<WPARAM, LPARAM>;
  for (const auto& [key, flags] : {Key{VK_RIGHT, 1}, Key{VK_UP, kHeld}, Key{VK_SPACE, 1}, Key{VK_RETURN, 1},
                                   Key{VK_SPACE, kHeld}, Key{'A', 1}}) {
    SendMessageW(boardWindow(), WM_KEYDOWN, key, flags);
  }
  EXPECT_EQ(kinds, "mmuu");
  EXPECT_FLOAT_EQ(last.x, 975);
  EXPECT_FLOAT_EQ(last.y, 675);
  EXPECT_EQ(last.button, kLeftButton);
  // Tab goes round in the order of the form.
  for (const HWND next : {buttonWindow(), boxWindow(), boardWindow(), listWindow(), buttonWindow()}) {
    press(VK_TAB);
    EXPECT_EQ(GetFocus(), next);
  }
  press(VK_RETURN);
  EXPECT_EQ(clicks, 1);
  // A button that is hidden gives the focus on, and may take it when it is shown again.
  button.FocusWhenShown = true;
  for (const auto& [visible, focused] : {std::pair{false, boxWindow()}, {true, buttonWindow()}}) {
    button.Visible = visible;
    tick();
    EXPECT_EQ(GetFocus(), focused);
  }
}

TEST_F(FormWindowTest, ScalesAsAWholeWithItsProportionsKept) {
  const PixelSize first = clientSize(top());
  EXPECT_EQ(first, areaAt(form, designScale(GetDpiForWindow(top()))));
  RECT frame{};
  GetWindowRect(top(), &frame);
  RECT dragged = frame;
  dragged.right += first.width;
  SendMessageW(top(), WM_SIZING, WMSZ_RIGHT, reinterpret_cast<LPARAM>(&dragged));
  EXPECT_EQ(dragged.right, frame.right + first.width);
  EXPECT_EQ(dragged.bottom, frame.bottom + first.height);
  // The class of the list would have a height of its own.
  for (const int width : {150, 222, 451}) {
    SetWindowPos(top(), nullptr, 0, 0, width, 2 * width, SWP_NOMOVE | SWP_NOZORDER);
    const double scale = clientSize(top()).width / form.Width;
    EXPECT_EQ(clientSize(listWindow()).height, std::lround(list.Height * scale)) << width;
  }
}

TEST_F(FormWindowTest, TakesTheSizesOfAnotherMonitorAndNoneThatIsTooSmall) {
  const PixelSize area = clientSize(top());
  SIZE size{};
  SendMessageW(top(), WM_GETDPISCALEDSIZE, WPARAM{2} * GetDpiForWindow(top()),
               reinterpret_cast<LPARAM>(&size));
  RECT place{10, 10, 10 + size.cx, 10 + size.cy};
  SendMessageW(top(), WM_DPICHANGED, 0, reinterpret_cast<LPARAM>(&place));
  EXPECT_NEAR(clientSize(top()).width, 2 * area.width, 10);
  EXPECT_NEAR(clientSize(boardWindow()).width, area.width, 10);
  MINMAXINFO limits{};
  SendMessageW(top(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  SetWindowPos(top(), nullptr, 0, 0, limits.ptMinTrackSize.x, limits.ptMinTrackSize.y, 0);
  EXPECT_EQ(clientSize(top()).width, area.width / 2);
}

TEST_F(FormWindowTest, AnExceptionOfAHandlerEndsTheLoopAndNothingIsRaisedAfterIt) {
  button.Click = [this] {
    ++clicks;
    throw std::runtime_error("broken");
  };
  for (int i = 0; i < 2; ++i) click();
  EXPECT_EQ(Win32Events().runUntilQuit(), EXIT_FAILURE);
  EXPECT_EQ(clicks, 1);
  EXPECT_THROW(window->rethrowFailure(), std::runtime_error);
}

// A mail under way goes out whole: its socket is told what happens by messages that are not the form's.
TEST_F(FormWindowTest, ClosingWhileAHandlerWaitsLetsItHaveItsMessagesAndFinish) {
  static int received;
  received = 0;
  const UINT_PTR socket = SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR, DWORD) { ++received; });
  Win32Events events;
  int ticks = 0;
  clock.Tick = [&] { ++ticks; };
  button.Click = [&] {
    PostMessageW(top(), WM_CLOSE, 0, 0);
    events.waitAndProcess(1);
    EXPECT_FALSE(IsWindowVisible(top()));
    tick();
    for (int turns = 0; received < 3 && turns < 100; ++turns) events.waitAndProcess(1);
  };
  click();
  KillTimer(nullptr, socket);
  EXPECT_GE(received, 3);
  EXPECT_EQ(ticks, 0);
  EXPECT_EQ(events.runUntilQuit(), EXIT_SUCCESS);
}

}  // namespace
}  // namespace fiar::win32
