#include "win32/window/control_window.h"

#include "win32/window/picture_box_window.h"
#include "win32/window/standard_controls.h"

namespace fiar::win32 {
namespace {

using Made = std::unique_ptr<ControlWindow>;

/// Makes the object that is the right one for a kind of control.
struct Maker {
  const ControlContext& context;

  Made operator()(PictureBox* box) const { return std::make_unique<PictureBoxWindow>(*box, context); }
  Made operator()(Label* label) const { return std::make_unique<LabelWindow>(*label, context); }
  Made operator()(ComboBox* box) const { return std::make_unique<ComboBoxWindow>(*box, context); }
  Made operator()(CommandButton* button) const {
    return std::make_unique<CommandButtonWindow>(*button, context);
  }
  Made operator()(CheckBox* box) const { return std::make_unique<CheckBoxWindow>(*box, context); }
};

}  // namespace

std::unique_ptr<ControlWindow> ControlWindow::make(const ControlRef& control, const ControlContext& context) {
  return std::visit(Maker{context}, control);
}

void ControlWindow::open(HWND container, HWND before) {
  createWindow(container);
  SetWindowPos(window(), before == nullptr ? HWND_TOP : before, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void ControlWindow::layOut(const FormLayout& layout) {
  const PixelRect place = layout.place(control_);
  SetWindowPos(window(), nullptr, place.left, place.top, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_NOCOPYBITS);
  fit({place.width, place.height}, layout.scale());
}

}  // namespace fiar::win32
