#include "win32/window/picture_box_window.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>

#include "forms/units.h"
#include "win32/wide_text.h"
#include "win32/window/fonts.h"
#include "win32/window/keyboard.h"
#include "win32/window/pictures.h"

namespace fiar::win32 {
namespace {

// The frame about a picture that has the focus.
constexpr Color kFocusColor = 0x000060E0;
constexpr double kFocusWidth = 3 * kTwipsPerPixel;

int buttonsOf(WPARAM keys) {
  return ((keys & MK_LBUTTON) != 0 ? kLeftButton : 0) + ((keys & MK_RBUTTON) != 0 ? kRightButton : 0) +
         ((keys & MK_MBUTTON) != 0 ? kMiddleButton : 0);
}

int modifiersOf(WPARAM keys) {
  return ((keys & MK_SHIFT) != 0 ? kShiftKey : 0) + ((keys & MK_CONTROL) != 0 ? kCtrlKey : 0) +
         (pressedModifiers() & kAltKey);
}

int releasedButton(UINT message) {
  if (message == WM_LBUTTONUP) return kLeftButton;
  return message == WM_RBUTTONUP ? kRightButton : kMiddleButton;
}

std::optional<KeyMove> moveOf(WPARAM key) {
  switch (key) {
    case VK_LEFT:
      return KeyMove{.columns = -1};
    case VK_RIGHT:
      return KeyMove{.columns = 1};
    case VK_UP:
      return KeyMove{.rows = -1};
    case VK_DOWN:
      return KeyMove{.rows = 1};
    default:
      return std::nullopt;
  }
}

}  // namespace

PictureBoxWindow::PictureBoxWindow(PictureBox& box, const ControlContext& context)
    : Window(context.handlers), ControlWindow(box), box_(box), pictures_(context.pictures) {
  textDrawer_ = [this](const BitmapView&, const PixelRect& area, TextView text, int x, int y, Color color) {
    drawTextAt(buffer_.context(), area, text, x, y, font_.get(), color);
    GdiFlush();
  };
}

void PictureBoxWindow::createWindow(HWND container) {
  // Screen readers call a window that is no standard control by its text.
  shownName_ = box_.AccessibleName;
  create(toWide(shownName_).c_str(),
         WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | (box_.TabStop ? WS_TABSTOP : 0),
         box_.TabStop ? 0 : WS_EX_CONTROLPARENT, container);
}

void PictureBoxWindow::fit(PixelSize size, double scale) {
  buffer_.resize(size);
  font_ = makeFont(box_.Font, scale);
  // By the size in whole pixels, so that the last line of a grid lies exactly on the edge.
  scale_ = {.pixelsPerTwip = size.width / box_.Width, .pixelsPerDrawWidth = scale * kTwipsPerPixel};
  mousePosition_.reset();
  render(kWholePicture);
}

void PictureBoxWindow::update() {
  if (box_.AccessibleName != shownName_) updateName();
  const PixelRect stale = staleArea();
  if (stale.width == 0) return;
  render(stale);
  // Shown at once: the game's timer keeps the queue so busy that WM_PAINT would come late.
  const ClientContext screen(window());
  buffer_.show(screen.get(), {stale.left, stale.top, stale.left + stale.width, stale.top + stale.height});
}

void PictureBoxWindow::updateName() {
  shownName_ = box_.AccessibleName;
  SetWindowTextW(window(), toWide(shownName_).c_str());
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
}

void PictureBoxWindow::updateFocus() {
  if (focusShows(window()) != focusShown_) stale_ = true;
  update();
}

PixelRect PictureBoxWindow::staleArea() const {
  const PixelRect whole{.width = buffer_.size().width, .height = buffer_.size().height};
  if (stale_ || !(box_.Picture == shownPicture_)) return whole;
  if (!box_.Picture.resource.empty()) return {};
  if (box_.BackColor != shownBackColor_) return whole;
  if (box_.revision() == shownRevision_) return {};
  return changedArea(shownDrawing_, box_.drawing(), scale_, buffer_.size());
}

void PictureBoxWindow::render(const PixelRect& area) {
  if (box_.Picture.resource.empty()) {
    paint(box_.drawing(), box_.BackColor, scale_, buffer_.pixels(), textDrawer_, area);
  } else {
    pictures_.show(box_.Picture, buffer_);
  }
  focusShown_ = focusShows(window());
  if (focusShown_) drawFocusFrame();
  shownDrawing_ = box_.drawing();
  shownRevision_ = box_.revision();
  shownPicture_ = box_.Picture;
  shownBackColor_ = box_.BackColor;
  stale_ = false;
}

void PictureBoxWindow::drawFocusFrame() const {
  const auto width = static_cast<int>(std::lround(kFocusWidth * scale_.pixelsPerTwip));
  RECT frame{0, 0, buffer_.size().width, buffer_.size().height};
  SetDCBrushColor(buffer_.context(), kFocusColor);
  for (int i = 0; i < std::max(1, width); ++i) {
    FrameRect(buffer_.context(), &frame, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    InflateRect(&frame, -1, -1);
  }
}

void PictureBoxWindow::paintBackground(HDC context, const RECT& area) {
  buffer_.show(context, area);
}

LRESULT PictureBoxWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEMOVE:
      mouseMoved(wParam, lParam);
      return 0;
    case WM_MOUSELEAVE:
      mousePosition_.reset();
      return 0;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
      if (box_.MouseMove || box_.MouseUp) SetCapture(window());
      if (box_.TabStop) SetFocus(window());
      return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
      if (buttonsOf(wParam) == 0) ReleaseCapture();
      raiseMouseUp(releasedButton(message), modifiersOf(wParam));
      return 0;
    case WM_KEYDOWN:
      if (keyPressed(wParam, lParam)) return 0;
      break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      updateFocus();
      return 0;
    case WM_UPDATEUISTATE:
      updateFocus();
      break;
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
      // The form knows the controls that lie in the box.
      return SendMessageW(GetParent(window()), message, wParam, lParam);
    default:
      break;
  }
  return Window::onMessage(message, wParam, lParam);
}

void PictureBoxWindow::mouseMoved(WPARAM keys, LPARAM position) {
  // The system also reports a mouse that rests, when something under it has changed. That must not move the
  // pointer from where a key has put it.
  if (mousePosition_ == position) return;
  if (!mousePosition_) {
    TRACKMOUSEEVENT leaving{sizeof(leaving), TME_LEAVE, window(), 0};
    TrackMouseEvent(&leaving);
  }
  mousePosition_ = position;
  raiseMouseMove(buttonsOf(keys), modifiersOf(keys), pointAt(position));
}

bool PictureBoxWindow::keyPressed(WPARAM key, LPARAM flags) {
  constexpr LPARAM kRepeated = LPARAM{1} << 30;
  if (!(box_.KeyStep > 0)) return false;
  const auto move = moveOf(key);
  const bool click = key == VK_SPACE || key == VK_RETURN;
  if (!move && !click) return false;
  if (move) {
    movePointer(*move);
  } else if ((flags & kRepeated) == 0) {
    raiseMouseUp(kLeftButton, pressedModifiers());
  }
  return true;
}

void PictureBoxWindow::movePointer(KeyMove move) {
  PicturePoint from{static_cast<float>(box_.Width / 2), static_cast<float>(box_.Height / 2)};
  if (pointer_) {
    // The column and the row stay the same when the cells get another size.
    const auto resized = static_cast<float>(box_.KeyStep / pointerStep_);
    from = {.x = pointer_->x * resized, .y = pointer_->y * resized};
  }
  raiseMouseMove(0, pressedModifiers(), movedByKey(box_, from, move));
}

void PictureBoxWindow::raiseMouseMove(int buttons, int modifiers, PicturePoint point) {
  pointer_ = point;
  pointerStep_ = box_.KeyStep;
  handlers().raise(box_.MouseMove, buttons, modifiers, point.x, point.y);
}

void PictureBoxWindow::raiseMouseUp(int button, int modifiers) {
  const PicturePoint point = pointer_.value_or(PicturePoint{});
  handlers().raise(box_.MouseUp, button, modifiers, point.x, point.y);
}

PicturePoint PictureBoxWindow::pointAt(LPARAM position) const {
  // The middle of the pixel, so that every pixel of the picture lies within it.
  const auto twips = [](int pixel, double length, int pixels) {
    return static_cast<float>((pixel + 0.5) * length / pixels);
  };
  return {.x = twips(GET_X_LPARAM(position), box_.Width, buffer_.size().width),
          .y = twips(GET_Y_LPARAM(position), box_.Height, buffer_.size().height)};
}

}  // namespace fiar::win32
