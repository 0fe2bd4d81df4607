#include "win32/window/form_window.h"

#include <algorithm>
#include <utility>

#include "win32/error.h"
#include "win32/wide_text.h"
#include "win32/window/keyboard.h"
#include "win32/window/window_sizing.h"

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

void moveTo(HWND window, const RECT& place) {
  SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

FormWindow::FormWindow(Form& form, const Resources& resources)
    : Window(guard_), form_(form), guard_([this] { update(); }), pictures_(resources) {
  if (form_.Load) form_.Load();
  create(toWide(form_.Caption).c_str(), kStyle, WS_EX_CONTROLPARENT, nullptr);
  shownCaption_ = form_.Caption;
  for (const ControlRef& control : form_.controls) {
    items_.push_back({ControlWindow::make(control, {guard_, pictures_})});
  }
  timers_.resize(form_.timers.size());
  loadIcons();
  moveTo(handle(), WindowSizing(form_, handle()).initialPlace());
  // If the window already has this size, no WM_SIZE comes.
  layOut();
  update();
}

FormWindow::~FormWindow() {
  // Contents before their containers.
  while (!items_.empty()) items_.pop_back();
}

void FormWindow::show(int command) {
  ShowWindow(handle(), command);
  UpdateWindow(handle());
  update();
  // Now that all are there, it goes to the first one.
  if (IsChild(handle(), GetFocus()) != FALSE) SetFocus(handle());
  checkPictures();
}

void FormWindow::checkPictures() const {
  for (const ControlRef& control : form_.controls) {
    const auto* const box = std::get_if<PictureBox*>(&control);
    if (box != nullptr && !(*box)->Picture.resource.empty()) pictures_.check((*box)->Picture);
  }
}

LRESULT FormWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_TIMER:
      tick(wParam - kFirstTimer);
      return 0;
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
      return onNotification(message, wParam, lParam);
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) layOut();
      return 0;
    case WM_GETMINMAXINFO: {
      const SIZE smallest = WindowSizing(form_, handle()).smallestSize();
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest.cx, smallest.cy};
      return 0;
    }
    case WM_SIZING:
      WindowSizing(form_, handle()).keepProportions(wParam, *reinterpret_cast<RECT*>(lParam));
      return TRUE;
    case WM_ENTERSIZEMOVE:
    case WM_EXITSIZEMOVE:
      pictures_.keepDecoded(message == WM_ENTERSIZEMOVE);
      return 0;
    case WM_GETDPISCALEDSIZE: {
      if (IsZoomed(handle()) != FALSE) return FALSE;
      const auto dpi = static_cast<unsigned>(wParam);
      *reinterpret_cast<SIZE*>(lParam) =
          WindowSizing(form_, handle()).sizeAt(layout_.scale() * dpi / GetDpiForWindow(handle()), dpi);
      return TRUE;
    }
    case WM_DPICHANGED:
      moveTo(handle(), *reinterpret_cast<const RECT*>(lParam));
      loadIcons();
      return 0;
    case WM_SETFOCUS:
      SetFocus(lastFocus_ != nullptr ? lastFocus_ : GetNextDlgTabItem(handle(), nullptr, FALSE));
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE && IsChild(handle(), GetFocus()) != FALSE) lastFocus_ = GetFocus();
      break;
    case WM_CHANGEUISTATE:
      if ((HIWORD(wParam) & UISF_HIDEFOCUS) != 0) hideFocus(LOWORD(wParam) == UIS_SET);
      return 0;
    case WM_QUERYUISTATE:
      return focusHidden_ ? UISF_HIDEFOCUS : 0;
    case WM_NCLBUTTONDBLCLK: {
      const LRESULT result = Window::onMessage(message, wParam, lParam);
      // The window is maximised while the button is still down. Its release must not count for the control
      // that is under the mouse then.
      if (isDown(VK_LBUTTON)) SetCapture(handle());
      return result;
    }
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    case WM_CLOSE:
      guard_.close();
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

LRESULT FormWindow::onNotification(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (auto* const control = controlIn(reinterpret_cast<HWND>(lParam))) control->onCommand(HIWORD(wParam));
      return 0;
    case WM_DRAWITEM: {
      const auto& drawing = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      if (auto* const control = controlIn(drawing.hwndItem)) control->onDraw(drawing);
      return TRUE;
    }
    default: {
      const auto& notification = *reinterpret_cast<const NMHDR*>(lParam);
      auto* const control = controlIn(notification.hwndFrom);
      return control == nullptr ? 0 : control->onNotify(notification);
    }
  }
}

ControlWindow* FormWindow::controlIn(HWND window) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const Item& item) { return item.window->window() == window; });
  return window == nullptr || found == items_.end() ? nullptr : found->window.get();
}

HWND FormWindow::containerOf(const Control& control) const {
  const auto container = std::find_if(items_.begin(), items_.end(), [&](const Item& item) {
    return &item.window->control() == control.Container;
  });
  return container == items_.end() ? handle() : container->window->window();
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
  if (!isSeen(item.window->control())) {
    if (item.seen) hideItem(item);
    return;
  }
  if (item.window->window() == nullptr) {
    // The system takes long to make its controls. They come once the window is up with its pictures.
    const bool picture = std::holds_alternative<PictureBox*>(form_.controls[index]);
    if (!picture && IsWindowVisible(handle()) == FALSE) return;
    openItem(index);
  }
  item.window->update();
  if (item.seen) return;
  ShowWindow(item.window->window(), SW_SHOWNA);
  item.seen = true;
  if (item.window->control().FocusWhenShown) moveFocus(item.window->window());
}

void FormWindow::moveFocus(HWND control) {
  if (IsChild(handle(), GetFocus()) != FALSE) {
    SetFocus(control);
  } else {
    lastFocus_ = control;
  }
}

void FormWindow::openItem(std::size_t index) {
  // Among the windows of one container the order is that of the controls: Tab and screen readers go by it.
  ControlWindow& opened = *items_[index].window;
  HWND before = nullptr;
  for (std::size_t i = 0; i < index; ++i) {
    const ControlWindow& other = *items_[i].window;
    if (other.control().Container == opened.control().Container && other.window() != nullptr) {
      before = other.window();
    }
  }
  opened.open(containerOf(opened.control()), before);
  opened.layOut(layout_);
  sendFocusState(opened.window());
}

void FormWindow::hideItem(Item& item) {
  const HWND window = item.window->window();
  const HWND next = GetNextDlgTabItem(handle(), window, FALSE);
  item.seen = false;
  if (GetFocus() == window) SetFocus(next);
  if (lastFocus_ == window) lastFocus_ = next;
  ShowWindow(window, SW_HIDE);
}

void FormWindow::hideFocus(bool hides) {
  if (hides == focusHidden_) return;
  focusHidden_ = hides;
  for (const Item& item : items_) sendFocusState(item.window->window());
}

void FormWindow::sendFocusState(HWND control) const {
  if (control == nullptr) return;
  SendMessageW(control, WM_UPDATEUISTATE, MAKEWPARAM(focusHidden_ ? UIS_SET : UIS_CLEAR, UISF_HIDEFOCUS), 0);
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
  guard_.raise(form_.timers[index]->Tick);
  timers_[index].ticking = false;
}

void FormWindow::layOut() {
  const PixelSize area = clientSize(handle());
  if (area == laidOut_ || area.width <= 0 || area.height <= 0) return;
  laidOut_ = area;
  layout_ = FormLayout(form_, area);
  for (const Item& item : items_) {
    if (item.window->window() != nullptr) item.window->layOut(layout_);
  }
  // All at once and only now, so that no step of it is seen.
  RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void FormWindow::loadIcons() {
  if (form_.Icon.resource.empty()) return;
  const unsigned dpi = GetDpiForWindow(handle());
  const auto load = [&](int widthMetric, int heightMetric, WPARAM which, IconHandle& icon) {
    const HANDLE loaded =
        LoadImageW(GetModuleHandleW(nullptr), toWide(form_.Icon.resource).c_str(), IMAGE_ICON,
                   GetSystemMetricsForDpi(widthMetric, dpi), GetSystemMetricsForDpi(heightMetric, dpi), 0);
    if (loaded == nullptr)
      throw PictureError(form_.Icon.resource, Error("LoadImage", GetLastError()).message());
    IconHandle next(static_cast<HICON>(loaded));
    SendMessageW(handle(), WM_SETICON, which, reinterpret_cast<LPARAM>(next.get()));
    icon = std::move(next);
  };
  load(SM_CXICON, SM_CYICON, ICON_BIG, largeIcon_);
  load(SM_CXSMICON, SM_CYSMICON, ICON_SMALL, smallIcon_);
}

}  // namespace fiar::win32
