#pragma once

#include <optional>

#include "forms/painter.h"
#include "forms/picture_box.h"
#include "win32/window/control_window.h"
#include "win32/window/pixel_buffer.h"
#include "win32/window/window.h"

namespace fiar::win32 {

/// Shows a picture box: its picture if it has one, else what is drawn on it. All painting happens in memory
/// and is shown whole. The mouse and, where the picture takes the focus, the keyboard become its events.
class PictureBoxWindow final : public Window, public ControlWindow {
public:
  PictureBoxWindow(PictureBox& box, const ControlContext& context);

  HWND window() const override { return handle(); }
  void update() override;

protected:
  void createWindow(HWND container) override;
  void fit(PixelSize size, double scale) override;
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void paintBackground(HDC context, const RECT& area) override;

private:
  /// What of the buffer does not show the box as it is now; empty if all of it does.
  PixelRect staleArea() const;
  void render(const PixelRect& area);
  void updateName();
  void updateFocus();
  void drawFocusFrame() const;

  void mouseMoved(WPARAM keys, LPARAM position);
  bool keyPressed(WPARAM key, LPARAM flags);
  void movePointer(KeyMove move);
  /// Tells the box where the pointer is.
  void raiseMouseMove(int buttons, int modifiers, PicturePoint point);
  /// Where the box was last told that the pointer is: a click means the place that a game has marked.
  void raiseMouseUp(int button, int modifiers);
  PicturePoint pointAt(LPARAM position) const;

  PictureBox& box_;
  Pictures& pictures_;
  TextDrawer textDrawer_;
  FontHandle font_;
  PixelBuffer buffer_;
  PaintScale scale_;

  // What the buffer shows.
  DrawingList shownDrawing_;
  std::uint64_t shownRevision_ = 0;
  Text shownName_;
  PictureRef shownPicture_;
  Color shownBackColor_ = kBlack;
  bool focusShown_ = false;
  bool stale_ = true;  ///< the buffer has to be painted anew whatever has changed

  std::optional<PicturePoint> pointer_;  ///< where the box was last told that the pointer is
  double pointerStep_ = 0;               ///< the box's KeyStep then
  std::optional<LPARAM> mousePosition_;  ///< while the mouse is over the box, in pixels, as messages hold it
};

}  // namespace fiar::win32
