// The sizes of a form's window: the first one, those that the user asks for, and those of other monitors.

#include <algorithm>

#include "win32/error.h"
#include "win32/wide_text.h"
#include "win32/window/form_window.h"

namespace fiar::win32 {
namespace {

// The smallest size of the window as a part of its design size: small, but everything can still be used.
constexpr double kSmallestPart = 0.5;

RECT workAreaOf(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  require(GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor), "GetMonitorInfo");
  return monitor.rcWork;
}

DraggedEdges draggedEdges(WPARAM edge) {
  switch (edge) {
    case WMSZ_LEFT:
    case WMSZ_RIGHT:
      return DraggedEdges::Side;
    case WMSZ_TOP:
    case WMSZ_BOTTOM:
      return DraggedEdges::TopOrBottom;
    default:
      return DraggedEdges::Corner;
  }
}

}  // namespace

void FormWindow::takeFirstSize() {
  const RECT room = workAreaOf(handle());
  const unsigned dpi = GetDpiForWindow(handle());
  const PixelSize area = areaAt(form_, std::min(designScale(dpi), largestScale()));
  const PixelSize frame = frameSize(dpi);
  const int width = area.width + frame.width;
  const int height = area.height + frame.height;
  SetWindowPos(handle(), nullptr, room.left + (static_cast<int>(room.right - room.left) - width) / 2,
               room.top + (static_cast<int>(room.bottom - room.top) - height) / 2, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  // The system says nothing of a size that the window happened to have.
  layOut();
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

void FormWindow::limitSize(MINMAXINFO& limits) const {
  const PixelSize smallest = areaAt(form_, smallestScale());
  const PixelSize frame = frameSize(GetDpiForWindow(handle()));
  limits.ptMinTrackSize = {smallest.width + frame.width, smallest.height + frame.height};
}

void FormWindow::keepProportions(WPARAM edge, RECT& window) const {
  const PixelSize frame = frameSize(GetDpiForWindow(handle()));
  const PixelSize asked = {.width = static_cast<int>(window.right - window.left) - frame.width,
                           .height = static_cast<int>(window.bottom - window.top) - frame.height};
  const PixelSize area = areaWhileDragging(form_, asked, draggedEdges(edge), smallestScale(), largestScale());
  const int width = area.width + frame.width;
  const int height = area.height + frame.height;
  // The edges that are not dragged stay.
  if (edge == WMSZ_LEFT || edge == WMSZ_TOPLEFT || edge == WMSZ_BOTTOMLEFT) {
    window.left = window.right - width;
  } else {
    window.right = window.left + width;
  }
  if (edge == WMSZ_TOP || edge == WMSZ_TOPLEFT || edge == WMSZ_TOPRIGHT) {
    window.top = window.bottom - height;
  } else {
    window.bottom = window.top + height;
  }
}

bool FormWindow::sizeForDpi(unsigned dpi, SIZE& size) const {
  if (IsZoomed(handle()) != FALSE) return false;
  const PixelSize area = areaAt(form_, layout_.scale() * dpi / GetDpiForWindow(handle()));
  const PixelSize frame = frameSize(dpi);
  size = {area.width + frame.width, area.height + frame.height};
  return true;
}

void FormWindow::takeDpi(const RECT& suggested) {
  SetWindowPos(handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  loadIcons();
}

void FormWindow::loadIcons() {
  if (form_.Icon.resource.empty()) return;
  const unsigned dpi = GetDpiForWindow(handle());
  const auto load = [&](int widthMetric, int heightMetric, WPARAM which, IconHandle& icon) {
    const HANDLE loaded =
        LoadImageW(GetModuleHandleW(nullptr), toWide(form_.Icon.resource).c_str(), IMAGE_ICON,
                   GetSystemMetricsForDpi(widthMetric, dpi), GetSystemMetricsForDpi(heightMetric, dpi), 0);
    if (loaded == nullptr) throw PictureError(form_.Icon.resource, Error("LoadImage", GetLastError()).what());
    IconHandle next(static_cast<HICON>(loaded));
    SendMessageW(handle(), WM_SETICON, which, reinterpret_cast<LPARAM>(next.get()));
    icon = std::move(next);
  };
  load(SM_CXICON, SM_CYICON, ICON_BIG, largeIcon_);
  load(SM_CXSMICON, SM_CYSMICON, ICON_SMALL, smallIcon_);
}

PixelSize FormWindow::frameSize(unsigned dpi) const {
  RECT frame{};
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(handle(), GWL_STYLE));
  const auto extendedStyle = static_cast<DWORD>(GetWindowLongPtrW(handle(), GWL_EXSTYLE));
  require(AdjustWindowRectExForDpi(&frame, style, FALSE, extendedStyle, dpi), "AdjustWindowRectExForDpi");
  return {.width = static_cast<int>(frame.right - frame.left),
          .height = static_cast<int>(frame.bottom - frame.top)};
}

double FormWindow::largestScale() const {
  const RECT room = workAreaOf(handle());
  const PixelSize frame = frameSize(GetDpiForWindow(handle()));
  return scaleThatFits(form_, {.width = static_cast<int>(room.right - room.left) - frame.width,
                               .height = static_cast<int>(room.bottom - room.top) - frame.height});
}

double FormWindow::smallestScale() const {
  return std::min(kSmallestPart * designScale(GetDpiForWindow(handle())), largestScale());
}

}  // namespace fiar::win32
