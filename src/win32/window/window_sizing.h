#pragma once

#include <windows.h>

#include "forms/form_layout.h"

namespace fiar::win32 {

/// How large the window of a form may be: its proportions stay those of the form, it fits its monitor's work
/// area, and everything in it can still be used. All sizes are those of the whole window, frame and title
/// included.
class WindowSizing {
public:
  /// \param form outlives this object; \param window shows it.
  WindowSizing(const Form& form, HWND window);

  /// Where the window is first seen: in the size of the form's design if that fits, in the middle of the
  /// monitor.
  RECT initialPlace() const;
  /// The smallest size that the user can give the window.
  SIZE smallestSize() const;
  /// The size that shows the form at a scale (pixels per twip) on a monitor of so many dots per inch.
  SIZE sizeAt(double scale, unsigned dpi) const;
  /// Corrects the place that the user drags the window to.
  /// \param edge what is dragged, as WM_SIZING names it.
  void keepProportions(WPARAM edge, RECT& window) const;

private:
  /// What the window's frame adds to its client area.
  PixelSize frameSize(unsigned dpi) const;
  RECT workArea() const;
  /// The largest scale at which the whole window fits on its monitor.
  double largestScale() const;
  double smallestScale() const;

  const Form& form_;
  HWND window_;
  unsigned dpi_;
};

}  // namespace fiar::win32
