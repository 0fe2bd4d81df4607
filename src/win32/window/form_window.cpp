#include "win32/window/form_window.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "win32/error.h"
#include "win32/wide_text.h"
#include "win32/window/keyboard.h"

namespace fiar::win32 {
namespace {

constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
// Timers of the window are numbered from 1.
constexpr UINT_PTR kFirstTimer = 1;

bool isSeen(const Control& control) {
  const Control* part = &control;
  while (part != nullptr && part->Visible) part = part->Container;
  return part == nullptr;
}

}  // namespace

FormWindow::FormWindow(Form& form, EventGate& gate, const Resources& resources)
    : Window(gate), form_(form), pictures_(resources) {
  if (form_.Load) form_.Load();
  create(toWide(form_.Caption).c_str(), kStyle, WS_EX_CONTROLPARENT, nullptr);
  shownCaption_ = form_.Caption;
  for (const ControlRef& control : form_.controls) {
    items_.push_back({ControlWindow::make(control, {gate, pictures_})});
  }
  timers_.resize(form_.timers.size());
  loadIcons();
  takeFirstSize();
  update();
  gate.afterEvent([this] { update(); });
}

void FormWindow::checkPictures() const {
  for (const ControlRef& control : form_.controls) {
    const auto* const box = std::get_if<PictureBox*>(&control);
    if (box != nullptr && !(*box)->Picture.resource.empty()) pictures_.check((*box)->Picture);
  }
}

FormWindow::~FormWindow() {
  gate().afterEvent([] {});
  lastFocus_ = nullptr;
  // Contents before their containers.
  while (!items_.empty()) items_.pop_back();
}

void FormWindow::show(int command) {
  ShowWindow(handle(), command);
  UpdateWindow(handle());
  checkPictures();
}

LRESULT FormWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_TIMER:
      tick(wParam - kFirstTimer);
      return 0;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) layOut();
      return 0;
    case WM_GETMINMAXINFO:
      limitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
      return 0;
    case WM_SIZING:
      keepProportions(wParam, *reinterpret_cast<RECT*>(lParam));
      return TRUE;
    case WM_ENTERSIZEMOVE:
      pictures_.keepDecoded(true);
      return 0;
    case WM_EXITSIZEMOVE:
      pictures_.keepDecoded(false);
      return 0;
    case WM_GETDPISCALEDSIZE:
      return sizeForDpi(static_cast<unsigned>(wParam), *reinterpret_cast<SIZE*>(lParam)) ? TRUE : FALSE;
    case WM_DPICHANGED:
      takeDpi(*reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SETFOCUS:
      if (lastFocus_ != nullptr) SetFocus(lastFocus_);
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE) {
        const HWND focused = GetFocus();
        if (IsChild(handle(), focused) != FALSE) lastFocus_ = focused;
      }
      break;
    case WM_CLOSE:
      // The windows stay until the loop has ended: an event may still be going on, and it may use them.
      gate().close();
      ShowWindow(handle(), SW_HIDE);
      return 0;
    default:
      break;
  }
  return Window::onMessage(message, wParam, lParam);
}

void FormWindow::paintBackground(HDC context, const RECT& area) {
  SetDCBrushColor(context, form_.BackColor);
  FillRect(context, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

bool FormWindow::dealsWith(const MSG& message) {
  if (message.hwnd != handle() && IsChild(handle(), message.hwnd) == FALSE) return false;
  if (endsTitleBarDoubleClick(message)) return true;
  if (const auto shows = focusHasToShow(message)) showFocus(*shows);
  return message.message == WM_KEYDOWN && handleDialogKey(message, tabOrder());
}

bool FormWindow::endsTitleBarDoubleClick(const MSG& message) {
  switch (message.message) {
    case WM_NCLBUTTONDBLCLK:
      titleBarDoubleClicked_ = true;
      return false;
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONUP:
    case WM_LBUTTONDOWN:
      titleBarDoubleClicked_ = false;
      return false;
    default:
      return message.message == WM_LBUTTONUP && std::exchange(titleBarDoubleClicked_, false);
  }
}

void FormWindow::showFocus(bool shows) {
  if (shows == focusShows_) return;
  focusShows_ = shows;
  // The standard controls keep it in their windows.
  SendMessageW(handle(), WM_CHANGEUISTATE, MAKEWPARAM(shows ? UIS_CLEAR : UIS_SET, UISF_HIDEFOCUS), 0);
  for (const Item& item : items_) item.window->showFocus(shows);
}

void FormWindow::update() {
  if (form_.Caption != shownCaption_) {
    shownCaption_ = form_.Caption;
    SetWindowTextW(handle(), toWide(shownCaption_).c_str());
  }
  // What cannot be seen is brought in line when it can.
  if (IsIconic(handle()) == FALSE) {
    for (std::size_t i = 0; i < items_.size(); ++i) updateItem(i);
  }
  updateTimers();
}

void FormWindow::updateItem(std::size_t index) {
  Item& item = items_[index];
  const bool seen = isSeen(item.window->control());
  if (!seen) {
    if (item.seen) hideItem(index);
    return;
  }
  if (item.window->window() == nullptr) openItem(index);
  item.window->update();
  if (item.seen) return;
  ShowWindow(item.window->window(), SW_SHOWNA);
  item.seen = true;
  if (lastFocus_ == nullptr && item.window->takesFocus()) lastFocus_ = item.window->window();
}

void FormWindow::openItem(std::size_t index) {
  // Among the windows of one container the order is that of the controls: screen readers go by it.
  const Control* const container = items_[index].window->control().Container;
  HWND before = nullptr;
  for (std::size_t i = 0; i < index; ++i) {
    const ControlWindow& other = *items_[i].window;
    if (other.control().Container == container && other.window() != nullptr) before = other.window();
  }
  items_[index].window->open(containerOf(items_[index].window->control()), before);
  items_[index].window->layOut(layout_);
}

void FormWindow::hideItem(std::size_t index) {
  Item& item = items_[index];
  const HWND window = item.window->window();
  item.seen = false;
  if (GetFocus() == window) SetFocus(focusAfter(index));
  if (lastFocus_ == window) lastFocus_ = focusAfter(index);
  ShowWindow(window, SW_HIDE);
}

HWND FormWindow::focusAfter(std::size_t index) const {
  for (std::size_t step = 1; step < items_.size(); ++step) {
    const Item& item = items_[(index + step) % items_.size()];
    if (item.seen && item.window->takesFocus()) return item.window->window();
  }
  return handle();
}

std::vector<HWND> FormWindow::tabOrder() const {
  std::vector<HWND> order;
  for (const Item& item : items_) {
    if (item.seen && item.window->takesFocus()) order.push_back(item.window->window());
  }
  return order;
}

HWND FormWindow::containerOf(const Control& control) const {
  const auto container = std::find_if(items_.begin(), items_.end(), [&](const Item& item) {
    return &item.window->control() == control.Container;
  });
  return container == items_.end() ? handle() : container->window->window();
}

void FormWindow::updateTimers() {
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    const Timer& timer = *form_.timers[i];
    const int interval = timer.Enabled ? timer.Interval : 0;
    if (interval == timers_[i].interval) continue;
    timers_[i].interval = interval;
    if (interval > 0) {
      require(SetTimer(handle(), kFirstTimer + i, static_cast<UINT>(interval), nullptr), "SetTimer");
    } else {
      KillTimer(handle(), kFirstTimer + i);
    }
  }
}

void FormWindow::tick(std::size_t index) {
  // A handler that waits lets events through, but not its own.
  if (index >= timers_.size() || timers_[index].ticking) return;
  timers_[index].ticking = true;
  gate().raise([&] {
    if (form_.timers[index]->Tick) form_.timers[index]->Tick();
  });
  timers_[index].ticking = false;
}

}  // namespace fiar::win32
