// Shows a small form in a real window, sends it messages, and looks at what the form was told.

#include "platform/win32/form_window.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <vector>

#include "platform/file_resources.h"
#include "platform/win32/com.h"
#include "platform/win32/win32_events.h"
#include "support/allocation_count.h"

namespace fiar::win32 {
namespace {

/// One MouseMove or MouseUp.
struct PointerEvent {
  char kind;  ///< 'm' or 'u'
  int button;
  int shift;
  float x, y;
};

/// A background with a board of 10 x 10 cells, a button, a list and a score, in the window that shows them.
class FormWindowTest : public testing::Test {
protected:
  FormWindowTest() {
    form.Caption = u"Form";
    form.Width = 3000;
    form.Height = 1500;
    place(background, 0, 0, 3000, 1500);
    place(board, 1500, 0, 1500, 1500);
    board.TabStop = true;
    board.KeyStep = 150;
    board.MouseMove = [this](int pressed, int shift, float x, float y) {
      pointer.push_back({'m', pressed, shift, x, y});
    };
    board.MouseUp = [this](int released, int shift, float x, float y) {
      pointer.push_back({'u', released, shift, x, y});
    };
    place(button, 0, 0, 600, 300);
    button.Caption = u"Start";
    place(list, 0, 400, 900, 315);
    place(score, 0, 800, 600, 300);
    score.Caption = u"0";
    for (Control* control : std::initializer_list<Control*>{&board, &button, &list, &score}) {
      control->Container = &background;
    }
    form.controls = {&background, &list, &button, &board, &score};
    clock.Interval = 5;
    form.timers = {&clock};
    form.Load = [this] {
      list.AddItem(u"one");
      list.AddItem(u"two");
      list.setListIndex(0);
    };
  }

  void show() {
    window = std::make_unique<FormWindow>(form, gate, resources);
    window->show(SW_SHOWNORMAL);
  }

  static void place(Control& control, double left, double top, double width, double height) {
    control.Left = left;
    control.Top = top;
    control.Width = width;
    control.Height = height;
  }

  HWND top() const { return window->handle(); }
  HWND backgroundWindow() const { return GetWindow(top(), GW_CHILD); }
  /// The window that lies at a point of the form, in twips.
  HWND windowAt(double x, double y) const {
    const double scale = FormLayout(form, clientSize(top())).scale();
    return ChildWindowFromPointEx(
        backgroundWindow(), {static_cast<LONG>(x * scale), static_cast<LONG>(y * scale)}, CWP_SKIPINVISIBLE);
  }
  HWND boardWindow() const { return windowAt(2000, 700); }
  void tick() { SendMessageW(top(), WM_TIMER, 1, 0); }
  void mouse(UINT message, WPARAM keys, int x, int y) {
    SendMessageW(boardWindow(), message, keys, MAKELPARAM(x, y));
  }
  void key(WPARAM code, LPARAM flags = 1) { SendMessageW(boardWindow(), WM_KEYDOWN, code, flags); }

  ComApartment apartment;
  FileResources resources{FIAR_RESOURCE_DIR};
  EventGate gate;
  Form form;
  PictureBox background;
  PictureBox board;
  CommandButton button;
  ComboBox list;
  Label score;
  Timer clock;
  std::vector<PointerEvent> pointer;
  std::unique_ptr<FormWindow> window;
};

/// Counts how often a window and those in it are painted.
class PaintCount {
public:
  explicit PaintCount(HWND top) {
    watch(top, reinterpret_cast<LPARAM>(this));
    EnumChildWindows(top, &PaintCount::watch, reinterpret_cast<LPARAM>(this));
  }
  int operator()() const { return paints_; }

private:
  static BOOL CALLBACK watch(HWND window, LPARAM count) {
    return SetWindowSubclass(window, &PaintCount::procedure, 1, static_cast<DWORD_PTR>(count));
  }
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                                    DWORD_PTR count) {
    if (message == WM_PAINT) ++reinterpret_cast<PaintCount*>(count)->paints_;
    return DefSubclassProc(window, message, wParam, lParam);
  }

  int paints_ = 0;
};

TEST_F(FormWindowTest, ShowsWhatDiffersAndTouchesNothingElse) {
  clock.Enabled = true;
  float end = 1000;
  clock.Tick = [&] {
    board.Cls();
    board.Line(0, 0, end, 1000, kBlack);
  };
  show();
  tick();
  RedrawWindow(top(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  const PaintCount paints(top());
  const std::size_t allocations = test::allocationCount();
  for (int i = 0; i < 100; ++i) tick();
  RedrawWindow(top(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  EXPECT_EQ(paints(), 0);
  EXPECT_EQ(test::allocationCount(), allocations);
  end = 500;
  tick();
  EXPECT_EQ(paints(), 1);

  clock.Tick = [this] {
    score.Caption = u"12";
    button.Visible = false;
    form.Caption = u"Other";
    clock.Enabled = false;
  };
  const HWND shownButton = windowAt(100, 100);
  SetFocus(shownButton);
  tick();
  wchar_t text[16] = {};
  GetWindowTextW(windowAt(100, 900), text, 16);
  EXPECT_STREQ(text, L"12");
  GetWindowTextW(top(), text, 16);
  EXPECT_STREQ(text, L"Other");
  EXPECT_EQ(IsWindowVisible(shownButton), FALSE);
  // The next control in the order of the form has the focus now.
  EXPECT_EQ(GetFocus(), boardWindow());
}

TEST_F(FormWindowTest, TheMouseBecomesPointerEventsInTwips) {
  show();
  const PixelSize pixels = clientSize(boardWindow());
  const double twips = board.Width / pixels.width;
  mouse(WM_MOUSEMOVE, MK_SHIFT, pixels.width - 1, 0);
  mouse(WM_MOUSEMOVE, MK_SHIFT, pixels.width - 1, 0);
  ASSERT_EQ(pointer.size(), 1U);
  EXPECT_LT(pointer[0].x, board.Width);
  EXPECT_FLOAT_EQ(pointer[0].y, static_cast<float>(twips / 2));
  EXPECT_EQ(pointer[0].shift, kShiftKey);

  mouse(WM_LBUTTONDOWN, MK_LBUTTON, 10, 10);
  EXPECT_EQ(GetCapture(), boardWindow());
  mouse(WM_MOUSEMOVE, MK_LBUTTON, -20, 10);
  EXPECT_LT(pointer.back().x, 0);
  EXPECT_EQ(pointer.back().button, kLeftButton);
  mouse(WM_LBUTTONUP, MK_CONTROL, -20, 10);
  EXPECT_EQ(pointer.back().kind, 'u');
  EXPECT_EQ(pointer.back().button, kLeftButton);
  EXPECT_EQ(pointer.back().shift, kCtrlKey);
  EXPECT_EQ(GetCapture(), nullptr);

  // Another window takes the mouse away in the middle of a press.
  mouse(WM_LBUTTONDOWN, MK_LBUTTON, 10, 10);
  ReleaseCapture();
  mouse(WM_MOUSEMOVE, 0, 12, 12);
  EXPECT_EQ(pointer.back().button, 0);
}

TEST_F(FormWindowTest, KeysMoveThePointerAndClick) {
  show();
  struct Case {
    WPARAM key;
    LPARAM flags;
    std::string kinds;  ///< of the events that follow
    float x, y;         ///< of the last one
  };
  constexpr LPARAM kHeld = LPARAM{1} << 30;
  for (const Case& one : {Case{VK_RIGHT, 1, "m", 975, 825}, Case{VK_UP, kHeld, "m", 975, 675},
                          Case{VK_SPACE, 1, "mu", 975, 675}, Case{VK_RETURN, 1, "mu", 975, 675},
                          Case{VK_SPACE, kHeld, "", 975, 675}, Case{'A', 1, "", 975, 675}}) {
    const std::size_t before = pointer.size();
    key(one.key, one.flags);
    std::string kinds;
    for (std::size_t i = before; i < pointer.size(); ++i) kinds += pointer[i].kind;
    EXPECT_EQ(kinds, one.kinds) << one.key;
    EXPECT_FLOAT_EQ(pointer.back().x, one.x) << one.key;
    EXPECT_FLOAT_EQ(pointer.back().y, one.y) << one.key;
  }
  EXPECT_EQ(pointer.back().button, kLeftButton);

  // Tab goes round in the order of the form.
  std::vector<HWND> visited;
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(window->dealsWith({GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}}));
    visited.push_back(GetFocus());
  }
  EXPECT_EQ(visited,
            (std::vector<HWND>{windowAt(100, 100), boardWindow(), windowAt(100, 500), windowAt(100, 100)}));
}

TEST_F(FormWindowTest, ControlsRaiseTheirEvents) {
  int clicks = 0;
  int choices = 0;
  button.Click = [&] { ++clicks; };
  list.Click = [&] { ++choices; };
  show();
  choices = 0;
  SendMessageW(windowAt(100, 100), BM_CLICK, 0, 0);
  EXPECT_EQ(clicks, 1);
  EXPECT_TRUE(window->dealsWith({windowAt(100, 100), WM_KEYDOWN, VK_RETURN, 1, 0, {}}));
  EXPECT_EQ(clicks, 2);
  SendMessageW(windowAt(100, 500), WM_KEYDOWN, VK_DOWN, 1);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(choices, 1);
}

TEST_F(FormWindowTest, ScalesAsAWholeWithItsProportionsKept) {
  show();
  const PixelSize first = clientSize(top());
  EXPECT_EQ(first, areaAt(form, designScale(GetDpiForWindow(top()))));
  RECT frame{};
  GetWindowRect(top(), &frame);
  const LONG besides = (frame.right - frame.left) - first.width;
  RECT dragged = frame;
  dragged.right += first.width;
  SendMessageW(top(), WM_SIZING, WMSZ_RIGHT, reinterpret_cast<LPARAM>(&dragged));
  EXPECT_EQ((dragged.right - dragged.left - besides), 2 * first.width);
  EXPECT_EQ(dragged.bottom - dragged.top, frame.bottom - frame.top + first.height);
  EXPECT_EQ(dragged.top, frame.top);

  RECT suggested{50, 60, 50 + 900, 60 + 700};
  SendMessageW(top(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&suggested));
  GetWindowRect(top(), &frame);
  EXPECT_TRUE(EqualRect(&frame, &suggested));
  const PixelSize boardSize = clientSize(boardWindow());
  EXPECT_EQ(boardSize.width, boardSize.height);
  EXPECT_GT(boardSize.width, first.height);

  MINMAXINFO limits{};
  SendMessageW(top(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_GT(limits.ptMinTrackSize.x, 0);
  EXPECT_LT(limits.ptMinTrackSize.x, first.width + besides);
}

/// The highest of the numbers that the system gives to some new drawing objects: it takes the lowest that are
/// free, so that it grows with those that are left behind.
int highestDrawingObject() {
  int highest = 0;
  std::array<HPEN, 40> pens{};
  for (HPEN& pen : pens) pen = CreatePen(PS_SOLID, 1, RGB(0, 0, 0));
  for (const HPEN pen : pens) {
    highest = std::max<int>(highest, LOWORD(reinterpret_cast<ULONG_PTR>(pen)));
    DeleteObject(pen);
  }
  return highest;
}

TEST_F(FormWindowTest, LeavesNoDrawingObjectBehindOverManySizes) {
  background.Picture.resource = u"PICTURE2";
  show();
  const auto resize = [&](int width) { SetWindowPos(top(), nullptr, 0, 0, width, 500, SWP_NOMOVE); };
  SendMessageW(top(), WM_ENTERSIZEMOVE, 0, 0);
  resize(400);
  const int before = highestDrawingObject();
  for (int i = 0; i < 60; ++i) resize(300 + i);
  EXPECT_LT(highestDrawingObject(), before + 30);
}

TEST_F(FormWindowTest, AnExceptionOfAHandlerEndsTheLoopAndNothingIsRaisedAfterIt) {
  int clicks = 0;
  button.Click = [&] {
    ++clicks;
    throw std::runtime_error("broken");
  };
  show();
  SendMessageW(windowAt(100, 100), BM_CLICK, 0, 0);
  SendMessageW(windowAt(100, 100), BM_CLICK, 0, 0);
  EXPECT_EQ(Win32Events().runUntilQuit(), EXIT_FAILURE);
  EXPECT_EQ(clicks, 1);
  EXPECT_THROW(gate.rethrowFailure(), std::runtime_error);
}

TEST_F(FormWindowTest, ClosingWhileAHandlerWaitsLetsItFinish) {
  Win32Events events;
  bool finished = false;
  int ticks = 0;
  clock.Tick = [&] { ++ticks; };
  button.Click = [&] {
    PostMessageW(top(), WM_CLOSE, 0, 0);
    events.waitAndProcess(1);
    score.Caption = u"7";
    finished = true;
  };
  show();
  SendMessageW(windowAt(100, 100), BM_CLICK, 0, 0);
  EXPECT_TRUE(finished);
  tick();
  EXPECT_EQ(ticks, 0);
  EXPECT_EQ(events.runUntilQuit(), EXIT_SUCCESS);
  EXPECT_NO_THROW(gate.rethrowFailure());
}

/// Pictures that are there or not.
class TestPictures final : public Resources {
public:
  std::map<Text, std::string> pictures;

  std::optional<std::string> custom(unsigned /*number*/) const override { return std::nullopt; }
  std::optional<std::string> custom(TextView name) const override {
    const auto found = pictures.find(Text(name));
    return found == pictures.end() ? std::nullopt : std::optional(found->second);
  }
};

TEST_F(FormWindowTest, SaysWhichPictureIsMissingOrDamaged) {
  TestPictures own;
  own.pictures[u"EMPTY"] = "";
  own.pictures[u"TEXT"] = "no picture at all";
  own.pictures[u"HEADER"] = FileResources(FIAR_RESOURCE_DIR).custom(u"PICTURE2").value().substr(0, 9);
  for (const TextView name : {u"MISSING", u"EMPTY", u"TEXT", u"HEADER"}) {
    for (const bool visible : {true, false}) {
      background.Picture.resource = name;
      background.Visible = visible;
      try {
        FormWindow(form, gate, own).show(SW_HIDE);
        FAIL() << toUtf8(name);
      } catch (const PictureError& error) {
        EXPECT_NE(std::string(error.what()).find(toUtf8(name)), std::string::npos) << error.what();
      }
    }
  }
}

}  // namespace
}  // namespace fiar::win32
