// Sends messages to a small form in a real window, which is brought in line with the form after every event.

#include "win32/window/form_window.h"

#include <gtest/gtest.h>

#include "win32/services/services.h"

namespace fiar::win32 {
namespace {

/// A background with a list, a check box and a board of 10 x 10 cells of 10 x 10 pixels, in their window.
struct FormWindowTest : testing::Test {
  FormWindowTest() {
    form.Width = background.Width = 3000;
    form.Height = background.Height = 1500;
    background.BackColor = kGreen;
    list.Container = box.Container = board.Container = &background;
    list.Width = list.Height = box.Width = box.Height = box.Top = 400;
    board.Left = board.Width = board.Height = 1500;
    board.TabStop = true;
    board.KeyStep = 150;
    board.MouseMove = board.MouseUp = [this](int buttons, int keys, float x, float y) {
      told += std::to_string(buttons) + std::to_string(keys) + " ";
      place = {x, y};
    };
    form.controls = {&background, &list, &box, &board};
    window = std::make_unique<FormWindow>(form, resources);
    window->show(SW_SHOWNORMAL);
  }

  HWND top() const { return window->handle(); }
  HWND listWindow() const { return GetWindow(GetWindow(top(), GW_CHILD), GW_CHILD); }
  HWND boxWindow() const { return GetWindow(listWindow(), GW_HWNDNEXT); }
  HWND boardWindow() const { return GetWindow(boxWindow(), GW_HWNDNEXT); }
  void click() const { SendMessageW(boxWindow(), BM_CLICK, 0, 0); }
  void press(WPARAM key, LPARAM flags = 1) const { SendMessageW(boardWindow(), WM_KEYDOWN, key, flags); }
  void mouse(UINT message, WPARAM keys, LPARAM at) const { SendMessageW(boardWindow(), message, keys, at); }

  Win32Resources resources;
  Form form;
  PictureBox background;
  ComboBox list;
  CheckBox box;
  PictureBox board;
  std::string told;    ///< buttons and modifier keys of all events of the board
  PicturePoint place;  ///< of the last one
  std::unique_ptr<FormWindow> window;
};

TEST_F(FormWindowTest, ShowsWhatDiffersAndTouchesNothingElse) {
  // How many cells are not black in the middle.
  const auto paintedCells = [this] {
    const ClientContext screen(boardWindow());
    int count = 0;
    for (int i = 0; i < 100; ++i) {
      if (GetPixel(screen.get(), i / 10 * 10 + 5, i % 10 * 10 + 5) != kBlack) ++count;
    }
    return count;
  };
  float x = 525;
  box.Click = [&] {
    board.Cls();
    board.Circle(x, 675, 75, kGreen);
  };
  click();
  // Black everywhere, so that what is painted afterwards can be told.
  PatBlt(ClientContext(boardWindow()).get(), 0, 0, 10000, 10000, BLACKNESS);
  click();
  EXPECT_EQ(paintedCells(), 0);
  // A ring that moves by a cell.
  x += 150;
  click();
  EXPECT_EQ(paintedCells(), 2);
}

TEST_F(FormWindowTest, TellsScreenReadersANewNameOnce) {
  static int announced = 0;
  const auto count = [](HWINEVENTHOOK, DWORD, HWND, LONG object, LONG, DWORD, DWORD) {
    if (object == OBJID_CLIENT) ++announced;
  };
  constexpr DWORD kEvent = EVENT_OBJECT_NAMECHANGE;
  auto* const hook = SetWinEventHook(kEvent, kEvent, nullptr, count, GetCurrentProcessId(), 0, 0);
  board.AccessibleName = u"You won";
  for (int i = 0; i < 2; ++i) click();
  Win32Events().process();
  UnhookWinEvent(hook);
  EXPECT_EQ(announced, 1);
  EXPECT_TRUE(FindWindowExW(GetParent(boardWindow()), nullptr, nullptr, L"You won"));
}

TEST_F(FormWindowTest, ControlsLieOnThePictureAndGiveTheFocusOnWhenHidden) {
  RedrawWindow(boxWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  EXPECT_EQ(GetPixel(ClientContext(boxWindow()).get(), 0, 0), kGreen);
  EXPECT_EQ(GetFocus(), listWindow());
  list.Visible = false;
  press(VK_RIGHT);
  EXPECT_EQ(GetFocus(), boxWindow());
}

TEST_F(FormWindowTest, AClickHitsThePlaceThatWasLastReported) {
  constexpr LPARAM kPlace = MAKELPARAM(70, 75);
  constexpr LPARAM kHeld = LPARAM{1} << 30;
  // Keys move the pointer from the middle at first, then from where the mouse is.
  press(VK_RIGHT);
  EXPECT_FLOAT_EQ(place.x, 975);
  mouse(WM_MOUSEMOVE, MK_SHIFT, kPlace);
  press(VK_UP, kHeld);
  // The system reports a mouse that rests, too.
  mouse(WM_MOUSEMOVE, 0, kPlace);
  mouse(WM_LBUTTONDOWN, MK_LBUTTON, kPlace);
  EXPECT_EQ(GetCapture(), boardWindow());
  mouse(WM_LBUTTONUP, MK_CONTROL, kPlace);
  EXPECT_EQ(GetCapture(), nullptr);
  for (const auto key : {WPARAM{VK_SPACE}, WPARAM{VK_RETURN}, WPARAM{'A'}}) press(key);
  press(VK_RETURN, kHeld);
  EXPECT_FLOAT_EQ(place.y, 975);
  // One that has been away has moved, though it comes back to the very place.
  mouse(WM_MOUSELEAVE, 0, 0);
  mouse(WM_MOUSEMOVE, 0, kPlace);
  EXPECT_FLOAT_EQ(place.y, 1132.5);
  // Keys go on from the same row when the cells have got another size.
  board.KeyStep /= 2;
  press(VK_UP);
  EXPECT_FLOAT_EQ(place.y, 487.5);
  // What is dragged out of the board has a place, too.
  mouse(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-20, 10));
  EXPECT_LT(place.x, 0);
  EXPECT_EQ(told, "00 01 00 12 10 10 00 00 10 ");
}

TEST_F(FormWindowTest, KeepsItsProportionsAtEverySize) {
  EXPECT_EQ(clientSize(top()), (PixelSize{200, 100}));
  RECT frame{};
  GetWindowRect(top(), &frame);
  RECT dragged = frame;
  dragged.right += 200;
  SendMessageW(top(), WM_SIZING, WMSZ_RIGHT, reinterpret_cast<LPARAM>(&dragged));
  EXPECT_EQ(dragged.right, frame.right + 200);
  EXPECT_EQ(dragged.bottom, frame.bottom + 100);
  // A monitor of twice as many dots per inch.
  SIZE size{};
  SendMessageW(top(), WM_GETDPISCALEDSIZE, 192, reinterpret_cast<LPARAM>(&size));
  RECT doubled{0, 0, size.cx, size.cy};
  SendMessageW(top(), WM_DPICHANGED, 0, reinterpret_cast<LPARAM>(&doubled));
  EXPECT_NEAR(clientSize(top()).width, 400, 10);
  // The class of the list would have a height of its own. The last size is as small as it gets.
  for (const int width : {451, 222, 0}) {
    SetWindowPos(top(), nullptr, 0, 0, width, 2 * width, 0);
    const double scale = clientSize(top()).width / form.Width;
    EXPECT_NEAR(clientSize(listWindow()).height, list.Height * scale, 0.5) << width;
  }
  EXPECT_EQ(clientSize(top()).width, 100);
}

TEST_F(FormWindowTest, AnExceptionOfAHandlerEndsTheLoopAndNothingIsRaisedAfterIt) {
  box.Click = [] { throw std::exception(); };
  click();
  press(VK_RIGHT);
  EXPECT_EQ(told, "");
  EXPECT_EQ(Win32Events().runUntilQuit(), EXIT_FAILURE);
  EXPECT_THROW(window->rethrowFailure(), std::exception);
}

// A mail under way goes out whole: its socket is told what happens by messages that are not the form's.
TEST_F(FormWindowTest, ClosingWhileAHandlerWaitsLetsItHaveItsMessagesAndFinish) {
  static int received = 0;
  const UINT_PTR socket = SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR, DWORD) { ++received; });
  Win32Events events;
  box.Click = [&] {
    PostMessageW(top(), WM_CLOSE, 0, 0);
    events.waitAndProcess(1);
    EXPECT_FALSE(IsWindowVisible(top()));
    press(VK_RIGHT);
    for (int turns = 0; received < 3 && turns < 100; ++turns) events.waitAndProcess(1);
  };
  click();
  KillTimer(nullptr, socket);
  EXPECT_GE(received, 3);
  EXPECT_EQ(told, "");
  EXPECT_EQ(events.runUntilQuit(), EXIT_SUCCESS);
}

}  // namespace
}  // namespace fiar::win32
