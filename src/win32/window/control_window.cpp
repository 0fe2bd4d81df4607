#include "win32/window/control_window.h"

#include "win32/window/accessible_name.h"
#include "win32/window/picture_box_window.h"
#include "win32/window/standard_controls.h"

namespace fiar::win32 {
namespace {

/// Makes the object that is the right one for a kind of control.
struct Maker {
  const ControlSurroundings& surroundings;

  std::unique_ptr<ControlWindow> operator()(PictureBox* box) const {
    return std::make_unique<PictureBoxWindow>(*box, surroundings);
  }
  std::unique_ptr<ControlWindow> operator()(Label* label) const {
    return std::make_unique<LabelWindow>(*label, surroundings);
  }
  std::unique_ptr<ControlWindow> operator()(ComboBox* box) const {
    return std::make_unique<ComboBoxWindow>(*box, surroundings);
  }
  std::unique_ptr<ControlWindow> operator()(CommandButton* button) const {
    return std::make_unique<CommandButtonWindow>(*button, surroundings);
  }
  std::unique_ptr<ControlWindow> operator()(CheckBox* box) const {
    return std::make_unique<CheckBoxWindow>(*box, surroundings);
  }
};

ControlWindow* controlOf(HWND window) {
  return window == nullptr ? nullptr
                           : reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

}  // namespace

std::unique_ptr<ControlWindow> ControlWindow::make(const ControlRef& control,
                                                   const ControlSurroundings& surroundings) {
  return std::visit(Maker{surroundings}, control);
}

std::optional<LRESULT> ControlWindow::reflect(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (ControlWindow* const control = controlOf(reinterpret_cast<HWND>(lParam))) {
        control->onCommand(HIWORD(wParam));
      }
      return 0;
    case WM_NOTIFY: {
      const auto& notification = *reinterpret_cast<const NMHDR*>(lParam);
      ControlWindow* const control = controlOf(notification.hwndFrom);
      return control == nullptr ? std::nullopt : control->onNotify(notification);
    }
    case WM_DRAWITEM: {
      const auto& drawing = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      if (ControlWindow* const control = controlOf(drawing.hwndItem)) control->onDraw(drawing);
      return TRUE;
    }
    default:
      return std::nullopt;
  }
}

void ControlWindow::open(HWND container, HWND after) {
  createWindow(container);
  SetWindowPos(window(), after == nullptr ? HWND_TOP : after, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void ControlWindow::layOut(const FormLayout& layout) {
  const PixelRect place = layout.place(control_);
  SetWindowPos(window(), nullptr, place.left, place.top, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_NOCOPYBITS);
  fit({place.width, place.height}, layout.scale());
}

void ControlWindow::onCommand(UINT /*code*/) {}

std::optional<LRESULT> ControlWindow::onNotify(const NMHDR& /*notification*/) {
  return std::nullopt;
}

void ControlWindow::onDraw(const DRAWITEMSTRUCT& /*drawing*/) {}

}  // namespace fiar::win32
