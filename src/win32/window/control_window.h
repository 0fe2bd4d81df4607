#pragma once

#include <windows.h>

#include <memory>

#include "forms/form.h"
#include "forms/form_layout.h"

namespace fiar::win32 {

class HandlerGuard;
class Pictures;

/// What the windows of a form's controls share.
struct ControlContext {
  HandlerGuard& handlers;
  Pictures& pictures;
};

/// The window that shows one control of a form. It is there only once the control is to be seen.
class ControlWindow {
public:
  /// Makes the object for a control, without a window. The control and what the context names outlive it.
  static std::unique_ptr<ControlWindow> make(const ControlRef& control, const ControlContext& context);

  explicit ControlWindow(const Control& control) : control_(control) {}
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;
  virtual ~ControlWindow() = default;

  const Control& control() const { return control_; }
  /// Null before open().
  virtual HWND window() const = 0;

  /// Creates the window, hidden.
  /// \param before the window that stands before it among those of the container, null for none.
  void open(HWND container, HWND before);
  /// Moves the window to its place in the layout and adapts it to the scale. Paints nothing.
  void layOut(const FormLayout& layout);
  /// Shows what differs from what is shown; nothing else is touched.
  virtual void update() = 0;

  /// What its window tells the form by WM_COMMAND, WM_NOTIFY and WM_DRAWITEM.
  virtual void onCommand(UINT /*code*/) {}
  virtual LRESULT onNotify(const NMHDR& /*notification*/) { return 0; }
  virtual void onDraw(const DRAWITEMSTRUCT& /*drawing*/) {}

protected:
  virtual void createWindow(HWND container) = 0;
  /// Fits what is shown into a new size of the window, at a scale in pixels per twip.
  virtual void fit(PixelSize size, double scale) = 0;

private:
  const Control& control_;
};

}  // namespace fiar::win32
