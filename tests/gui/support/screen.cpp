#include "gui/support/screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace fiar::gui {

void Screen::Close::operator()(_XDisplay* display) const {
  XCloseDisplay(display);
}

Screen::Screen() : display_(XOpenDisplay(nullptr)) {
  if (display_ == nullptr) throw std::runtime_error("there is no display");
  int ignored = 0;
  if (XTestQueryExtension(display_.get(), &ignored, &ignored, &ignored, &ignored) == False) {
    throw std::runtime_error("the display lacks XTEST");
  }
  ownWindow_ = XCreateSimpleWindow(display_.get(), DefaultRootWindow(display_.get()), 0, 0, 1, 1, 0, 0, 0);
}

Screen::~Screen() {
  releaseAll();
}

Area Screen::area() const {
  const int screen = DefaultScreen(display_.get());
  return {0, 0, DisplayWidth(display_.get(), screen), DisplayHeight(display_.get(), screen)};
}

Picture Screen::look(Area wanted) const {
  const Area all = area();
  const Area seen{std::max(wanted.left, all.left), std::max(wanted.top, all.top),
                  std::min(wanted.right, all.right), std::min(wanted.bottom, all.bottom)};
  if (seen.width() <= 0 || seen.height() <= 0) return {};
  const std::unique_ptr<XImage, int (*)(XImage*)> image(
      XGetImage(display_.get(), DefaultRootWindow(display_.get()), seen.left, seen.top,
                static_cast<unsigned>(seen.width()), static_cast<unsigned>(seen.height()), AllPlanes,
                ZPixmap),
      [](XImage* old) { return XDestroyImage(old); });
  if (image == nullptr || image->bits_per_pixel != 32) throw std::runtime_error("the screen cannot be read");
  Picture picture{seen.width(), seen.height(), {}};
  picture.pixels.resize(static_cast<std::size_t>(seen.width()) * static_cast<std::size_t>(seen.height()));
  const std::size_t rowBytes = static_cast<std::size_t>(seen.width()) * sizeof(std::uint32_t);
  for (int y = 0; y < picture.height; ++y) {
    std::memcpy(&picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(seen.width())],
                image->data + std::ptrdiff_t{y} * image->bytes_per_line, rowBytes);
  }
  return picture;
}

Point Screen::pointer() const {
  Window ignoredWindow = None;
  int ignored = 0;
  unsigned ignoredButtons = 0;
  Point point;
  XQueryPointer(display_.get(), DefaultRootWindow(display_.get()), &ignoredWindow, &ignoredWindow, &point.x,
                &point.y, &ignored, &ignored, &ignoredButtons);
  return point;
}

void Screen::move(Point to) const {
  XTestFakeMotionEvent(display_.get(), -1, to.x, to.y, CurrentTime);
  XSync(display_.get(), False);
}

void Screen::press(int button) {
  buttonsDown_.push_back(button);
  XTestFakeButtonEvent(display_.get(), static_cast<unsigned>(button), True, CurrentTime);
  // It gets every press first and holds back what follows, but not the pointer.
  awaitWindowManager();
}

void Screen::release(int button) {
  std::erase(buttonsDown_, button);
  XTestFakeButtonEvent(display_.get(), static_cast<unsigned>(button), False, CurrentTime);
  XSync(display_.get(), False);
}

void Screen::click(Point where, int button) {
  move(where);
  press(button);
  release(button);
}

void Screen::drag(Point from, Point to) {
  move(from);
  press(kLeftButton);
  for (const Point& step : {Point{(from.x + to.x) / 2, (from.y + to.y) / 2}, to}) {
    move(step);
    awaitWindowManager();
  }
  release(kLeftButton);
}

void Screen::pressKey(Key key) {
  keysDown_.push_back(key);
  XTestFakeKeyEvent(display_.get(), XKeysymToKeycode(display_.get(), key), True, CurrentTime);
  XSync(display_.get(), False);
}

void Screen::releaseKey(Key key) {
  std::erase(keysDown_, key);
  XTestFakeKeyEvent(display_.get(), XKeysymToKeycode(display_.get(), key), False, CurrentTime);
  XSync(display_.get(), False);
}

void Screen::type(Key key) {
  pressKey(key);
  releaseKey(key);
}

void Screen::releaseAll() {
  while (!buttonsDown_.empty()) release(buttonsDown_.back());
  while (!keysDown_.empty()) releaseKey(keysDown_.back());
}

void Screen::awaitWindowManager() const {
  const Atom answer = XInternAtom(display_.get(), "_NET_FRAME_EXTENTS", False);
  XDeleteProperty(display_.get(), ownWindow_, answer);
  XEvent question{};
  question.xclient.type = ClientMessage;
  question.xclient.window = ownWindow_;
  question.xclient.message_type = XInternAtom(display_.get(), "_NET_REQUEST_FRAME_EXTENTS", False);
  question.xclient.format = 32;
  XSendEvent(display_.get(), DefaultRootWindow(display_.get()), False,
             SubstructureNotifyMask | SubstructureRedirectMask, &question);
  const bool answered = eventually([&] {
    int count = 0;
    const std::unique_ptr<Atom, int (*)(void*)> properties(
        XListProperties(display_.get(), ownWindow_, &count), XFree);
    return std::find(properties.get(), properties.get() + count, answer) != properties.get() + count;
  });
  if (!answered) throw std::runtime_error("the display has no window manager that answers");
}

Area Screen::frameAt(Point where) const {
  const Window root = DefaultRootWindow(display_.get());
  Window frame = None;
  Window ignoredRoot = None;
  Point corner;
  unsigned width = 0;
  unsigned height = 0;
  unsigned ignored = 0;
  XTranslateCoordinates(display_.get(), root, root, where.x, where.y, &corner.x, &corner.y, &frame);
  if (frame == None) throw std::runtime_error("there is no window at that point of the screen");
  XGetGeometry(display_.get(), frame, &ignoredRoot, &corner.x, &corner.y, &width, &height, &ignored,
               &ignored);
  return {corner.x, corner.y, corner.x + static_cast<int>(width), corner.y + static_cast<int>(height)};
}

bool eventually(const std::function<bool()>& condition) {
  using Clock = std::chrono::steady_clock;
  constexpr auto kLimit = std::chrono::seconds(30);
  // Between two looks the programs that are looked at get the processor.
  constexpr auto kPause = std::chrono::milliseconds(10);
  for (const auto end = Clock::now() + kLimit; Clock::now() < end; std::this_thread::sleep_for(kPause)) {
    if (condition()) return true;
  }
  return condition();
}

}  // namespace fiar::gui
