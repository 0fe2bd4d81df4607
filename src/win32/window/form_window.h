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
class FormWindow final : public Window {
public:
  /// Raises the form's Load and makes its windows, which show() shows. Throws what Load throws, and
  /// PictureError.
  /// \param form, gate, resources outlive the window; \param gate the way of the events to the form.
  FormWindow(Form& form, EventGate& gate, const Resources& resources);
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;
  FormWindow(FormWindow&&) = delete;
  FormWindow& operator=(FormWindow&&) = delete;
  ~FormWindow() override;

  /// Throws PictureError for a picture that is not seen yet, too: better now than in the middle of a game.
  /// \param command how, as the system passes it to the program.
  void show(int command);

  /// Deals with keys that do not belong to one control alone, before the message is delivered. Returns
  /// whether that was all.
  bool dealsWith(const MSG& message);

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

  void checkPictures() const;
  void update();
  void updateItem(std::size_t index);
  void openItem(std::size_t index);
  void hideItem(std::size_t index);
  /// The window to which the focus goes when the control that has it is hidden.
  HWND focusAfter(std::size_t index) const;
  void showFocus(bool shows);
  void updateTimers();
  void tick(std::size_t index);

  /// Whether the message is the release of a double-click on the title bar. That maximises the window while
  /// the button is down, so the release meets whatever has come under the mouse.
  bool endsTitleBarDoubleClick(const MSG& message);
  void takeFirstSize();
  void layOut();
  void limitSize(MINMAXINFO& limits) const;
  void keepProportions(WPARAM edge, RECT& window) const;
  bool sizeForDpi(unsigned dpi, SIZE& size) const;
  void takeDpi(const RECT& suggested);
  void loadIcons();

  HWND containerOf(const Control& control) const;
  std::vector<HWND> tabOrder() const;
  /// What the window's frame adds to its client area.
  PixelSize frameSize(unsigned dpi) const;
  /// The largest scale at which the whole window fits on its monitor.
  double largestScale() const;
  double smallestScale() const;

  Form& form_;
  Pictures pictures_;
  std::vector<Item> items_;  ///< in the order of the form's controls
  std::vector<ShownTimer> timers_;
  FormLayout layout_;
  PixelSize laidOut_;
  Text shownCaption_;
  IconHandle largeIcon_;
  IconHandle smallIcon_;
  bool focusShows_ = false;
  bool titleBarDoubleClicked_ = false;  ///< and the button is still down
  HWND lastFocus_ = nullptr;            ///< the control that had the focus before another program took it
};

}  // namespace fiar::win32
