#pragma once

#include <functional>
#include <vector>

#include "forms/pixels.h"
#include "platform/text.h"

namespace fiar {

class PictureBox;

/// A typeface. An empty name and no size stand for the system's own font for controls.
struct FontSpec {
  TextView name;
  double points = 0;
  bool bold = false;

  bool operator==(const FontSpec&) const = default;
};

/// A picture by the name of the resource that holds it; an empty name is no picture.
struct PictureRef {
  TextView resource;

  bool operator==(const PictureRef&) const = default;
};

/// What all controls have: the properties that a form designer sets. Positions and sizes are in twips,
/// relative to the container.
struct Control {
  double Left = 0;
  double Top = 0;
  double Width = 0;
  double Height = 0;
  bool Visible = true;
  bool FocusWhenShown = false;            ///< takes the focus whenever it becomes visible
  const PictureBox* Container = nullptr;  ///< the picture box that it lies in; none: the form itself
  Text AccessibleName;                    ///< what a screen reader says; empty: the caption
};

struct Label : Control {
  Text Caption;
  FontSpec Font;
  Color ForeColor = kBlack;
};

struct CommandButton : Control {
  Text Caption;
  FontSpec Font;
  std::function<void()> Click;
};

/// A check box on the picture of its container; its value is 0 (unchecked), 1 (checked) or 2 (greyed).
struct CheckBox : Control {
  Text Caption;
  FontSpec Font;
  Color ForeColor = kBlack;
  int Value = 0;
  std::function<void()> Click;
};

/// A drop-down list without typing.
class ComboBox : public Control {
public:
  FontSpec Font;
  std::function<void()> Click;  ///< raised by every change of the selection, by the user or by code

  void AddItem(TextView item) { items_.emplace_back(item); }
  const std::vector<Text>& items() const { return items_; }

  /// The selected item, counted from 0; -1 for none.
  int ListIndex() const { return listIndex_; }
  /// Selects an item (-1: none) and raises Click when that changes the selection. An index beyond the list is
  /// ignored.
  void setListIndex(int index) {
    if (index == listIndex_ || index < -1 || index >= static_cast<int>(items_.size())) return;
    listIndex_ = index;
    if (Click) Click();
  }

private:
  std::vector<Text> items_;
  int listIndex_ = -1;
};

/// Raises its event about every `Interval` milliseconds while enabled.
struct Timer {
  int Interval = 0;
  bool Enabled = false;
  std::function<void()> Tick;
};

/// Mouse buttons as events report them.
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;

/// Modifier keys as events report them, added up.
inline constexpr int kShiftKey = 1;
inline constexpr int kCtrlKey = 2;
inline constexpr int kAltKey = 4;

}  // namespace fiar
