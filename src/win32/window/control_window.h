#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "forms/form.h"
#include "forms/form_layout.h"

namespace fiar::win32 {

class EventGate;
class Pictures;

/// What the windows of a form's controls share.
struct ControlSurroundings {
  EventGate& gate;
  Pictures& pictures;
};

/// The window that shows one control of a form. It is there only once the control is to be seen.
class ControlWindow {
public:
  /// Makes the object for a control, without a window. The control and the surroundings outlive it.
  static std::unique_ptr<ControlWindow> make(const ControlRef& control,
                                             const ControlSurroundings& surroundings);
  /// Passes on what the system tells a window about a control in it. Nothing when the message is no such one;
  /// then the system has to deal with it.
  static std::optional<LRESULT> reflect(UINT message, WPARAM wParam, LPARAM lParam);

  explicit ControlWindow(const Control& control) : control_(control) {}
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;
  ControlWindow(ControlWindow&&) = delete;
  ControlWindow& operator=(ControlWindow&&) = delete;
  virtual ~ControlWindow() = default;

  const Control& control() const { return control_; }
  /// Null before open().
  virtual HWND window() const = 0;
  /// Whether the control can have the keyboard focus.
  virtual bool takesFocus() const = 0;

  /// Creates the window, hidden.
  /// \param after the window that stands before it among those of the container, null for none.
  void open(HWND container, HWND after);
  /// Takes its place and whatever follows from the scale. Paints nothing on the screen.
  void layOut(const FormLayout& layout);
  /// Shows what differs from what is shown; nothing else is touched.
  virtual void update() = 0;
  /// Lets the control show from now on that it has the focus, or not.
  virtual void showFocus(bool shows) { focusShows_ = shows; }

protected:
  /// Whether it shows that it has the focus, if it has.
  bool focusShows() const { return focusShows_; }

  virtual void createWindow(HWND container) = 0;
  /// Fits what is shown into a new size of the window, at a scale in pixels per twip.
  virtual void fit(PixelSize size, double scale) = 0;

  /// What the window of its container tells it.
  virtual void onCommand(UINT code);
  virtual std::optional<LRESULT> onNotify(const NMHDR& notification);
  virtual void onDraw(const DRAWITEMSTRUCT& drawing);

private:
  const Control& control_;
  bool focusShows_ = false;
};

}  // namespace fiar::win32
