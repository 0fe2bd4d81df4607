#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

// Xlib's own header names its macros like parts of other libraries (None, Bool).
struct _XDisplay;  // NOLINT(bugprone-reserved-identifier)

namespace fiar::gui {

struct Point {
  int x = 0;
  int y = 0;

  bool operator==(const Point&) const = default;
};

/// An area of the screen in pixels; the right and bottom edges lie outside.
struct Area {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int width() const { return right - left; }
  int height() const { return bottom - top; }
  Point centre() const { return {(left + right) / 2, (top + bottom) / 2}; }
  bool contains(const Area& other) const {
    return other.left >= left && other.top >= top && other.right <= right && other.bottom <= bottom;
  }
  bool operator==(const Area&) const = default;
};

/// Pixels that were on the screen.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;  ///< row by row; the top bytes mean nothing

  /// A pixel as 0xRRGGBB.
  std::uint32_t at(int x, int y) const {
    return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(x)) &
           0xFFFFFF;
  }
};

inline constexpr int kLeftButton = 1;
inline constexpr int kMiddleButton = 2;
inline constexpr int kRightButton = 3;

/// What a key stands for: an XK_... of <X11/keysym.h>.
using Key = unsigned long;

/// The screen that $DISPLAY names, with its one mouse and keyboard. Whatever is held down is released in the
/// end.
class Screen {
public:
  Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  Screen(Screen&&) = delete;
  Screen& operator=(Screen&&) = delete;
  ~Screen();

  Area area() const;
  /// What is on the screen; of an area that reaches over its edges, the part within them.
  Picture look(Area wanted) const;

  Point pointer() const;
  /// Moves the pointer there at once, without a way between.
  void move(Point to) const;
  /// What comes after it comes to the window under the pointer later, and not with it.
  void press(int button);
  void release(int button);
  void click(Point where, int button = kLeftButton);
  /// Drags what belongs to the window manager, as a frame does: in several steps, each of them taken.
  void drag(Point from, Point to);
  void pressKey(Key key);
  void releaseKey(Key key);
  void type(Key key);
  void releaseAll();

  /// The window manager's frame about the window that is seen at a point.
  Area frameAt(Point where) const;

private:
  /// Waits until the window manager has dealt with all that has happened.
  void awaitWindowManager() const;

  struct Close {
    void operator()(_XDisplay* display) const;
  };

  std::unique_ptr<_XDisplay, Close> display_;
  unsigned long ownWindow_;  ///< never seen; what the window manager's answers go to
  std::vector<int> buttonsDown_;
  std::vector<Key> keysDown_;
};

/// Waits for a condition; tells whether it came true within a time that is ample on any machine.
bool eventually(const std::function<bool()>& condition);

}  // namespace fiar::gui
