#include "win32/window/window_sizing.h"

#include <algorithm>

#include "win32/error.h"

namespace fiar::win32 {
namespace {

// The smallest size of the window as a part of its design size: small, but everything can still be used.
constexpr double kSmallestPart = 0.5;

PixelSize sizeOf(const RECT& area) {
  return {.width = static_cast<int>(area.right - area.left),
          .height = static_cast<int>(area.bottom - area.top)};
}

PixelSize without(PixelSize window, PixelSize frame) {
  return {.width = window.width - frame.width, .height = window.height - frame.height};
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

WindowSizing::WindowSizing(const Form& form, HWND window)
    : form_(form), window_(window), dpi_(GetDpiForWindow(window)) {}

RECT WindowSizing::initialPlace() const {
  const RECT room = workArea();
  const SIZE size = sizeAt(std::min(designScale(dpi_), largestScale()), dpi_);
  const LONG left = room.left + (room.right - room.left - size.cx) / 2;
  const LONG top = room.top + (room.bottom - room.top - size.cy) / 2;
  return {left, top, left + size.cx, top + size.cy};
}

SIZE WindowSizing::smallestSize() const {
  return sizeAt(smallestScale(), dpi_);
}

SIZE WindowSizing::sizeAt(double scale, unsigned dpi) const {
  const PixelSize area = areaAt(form_, scale);
  const PixelSize frame = frameSize(dpi);
  return {area.width + frame.width, area.height + frame.height};
}

void WindowSizing::keepProportions(WPARAM edge, RECT& window) const {
  const PixelSize frame = frameSize(dpi_);
  const PixelSize area = areaWhileDragging(form_, without(sizeOf(window), frame), draggedEdges(edge),
                                           smallestScale(), largestScale());
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

PixelSize WindowSizing::frameSize(unsigned dpi) const {
  RECT frame{};
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE));
  const auto extendedStyle = static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE));
  require(AdjustWindowRectExForDpi(&frame, style, FALSE, extendedStyle, dpi), "AdjustWindowRectExForDpi");
  return sizeOf(frame);
}

RECT WindowSizing::workArea() const {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  require(GetMonitorInfoW(MonitorFromWindow(window_, MONITOR_DEFAULTTONEAREST), &monitor), "GetMonitorInfo");
  return monitor.rcWork;
}

double WindowSizing::largestScale() const {
  return scaleThatFits(form_, without(sizeOf(workArea()), frameSize(dpi_)));
}

double WindowSizing::smallestScale() const {
  return std::min(kSmallestPart * designScale(dpi_), largestScale());
}

}  // namespace fiar::win32
