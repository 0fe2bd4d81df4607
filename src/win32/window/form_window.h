#pragma once

#include <memory>
#include <vector>

#include "forms/form.h"
#include "forms/form_layout.h"
#include "platform/platform.h"
#include "win32/window/control_window.h"
#include "win32/window/pictures.h"
#include "win32/window/window.h"

namespace fiar::win32 {

/// Shows a form in a real window: builds windows from its controls, turns messages into their events, and
/// after each event brings the windows in line with the objects. What does not differ is not touched.
/// Closing the window ends the main loop; the windows stay until the object goes, for an event may be going
/// on.
class FormWindow final : public Window {
public:
  /// Raises the form's Load and makes its windows, which show() shows. Throws what Load throws, and
  /// PictureError.
  /// \param form, resources outlive the window.
  FormWindow(Form& form, const Resources& resources);
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;
  ~FormWindow() override;

  /// Throws PictureError for a picture that is not seen yet, too: better now than in the middle of a game.
  /// \param command how, as the system passes it to the program.
  void show(int command);

  /// After the main loop, rethrows the exception that ended it, if one did.
  void rethrowFailure() const { guard_.rethrowFailure(); }

protected:
  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void paintBackground(HDC context, const RECT& area) override;

private:
  /// One control with what is known of its window.
  struct Item {
    std::unique_ptr<ControlWindow> window;
    bool seen = false;
  };

  struct ShownTimer {
    int interval = 0;  ///< 0 while it does not run
    bool ticking = false;
  };

  /// Passes a WM_COMMAND, WM_DRAWITEM or WM_NOTIFY on to the control that it comes from.
  LRESULT onNotification(UINT message, WPARAM wParam, LPARAM lParam);
  /// Null for a window that shows no control of the form.
  ControlWindow* controlIn(HWND window) const;
  HWND containerOf(const Control& control) const;

  void update();
  void updateItem(std::size_t index);
  void openItem(std::size_t index);
  void hideItem(Item& item);
  /// Gives a control the focus, at once or when the window has it again.
  void moveFocus(HWND control);
  /// Has the controls hide, or show, which of them has the focus.
  void hideFocus(bool hides);
  void sendFocusState(HWND control) const;
  void updateTimers();
  void tick(std::size_t index);

  void layOut();
  void loadIcons();
  void checkPictures() const;

  Form& form_;
  HandlerGuard guard_;
  Pictures pictures_;
  std::vector<Item> items_;  ///< in the order of the form's controls
  std::vector<ShownTimer> timers_;
  FormLayout layout_;
  PixelSize laidOut_;
  Text shownCaption_;
  IconHandle largeIcon_;
  IconHandle smallIcon_;
  bool focusHidden_ = true;
  HWND lastFocus_ = nullptr;  ///< the control that had the focus before another program took it
};

}  // namespace fiar::win32
