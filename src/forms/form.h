#pragma once

#include <variant>
#include <vector>

#include "forms/controls.h"
#include "forms/picture_box.h"

namespace fiar {

/// Any control that can be seen.
using ControlRef = std::variant<PictureBox*, Label*, ComboBox*, CommandButton*, CheckBox*>;

/// A window as data. The host that shows it builds real windows from the controls, turns what the user does
/// into their events, and after each event brings the windows in line with the objects.
struct Form {
  Text Caption;
  double Width = 0;  ///< client area in twips; never changes, however large the window is shown
  double Height = 0;
  Color BackColor = kWhite;
  PictureRef Icon;
  std::vector<ControlRef> controls;  ///< containers before their contents, in tab order; not owned
  std::vector<Timer*> timers;        ///< not owned
  std::function<void()> Load;        ///< raised once, before the window is seen

  /// Appends a control that lies in a container, or in the form itself if there is none.
  void add(ControlRef added, const PictureBox* container = nullptr) {
    std::visit([&](Control* control) { control->Container = container; }, added);
    controls.push_back(added);
  }
};

}  // namespace fiar
