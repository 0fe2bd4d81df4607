#include "forms/controls.h"

namespace fiar {

void ComboBox::setListIndex(int index) {
  if (index == listIndex_ || index < -1 || index >= static_cast<int>(items_.size())) return;
  listIndex_ = index;
  if (Click) Click();
}

}  // namespace fiar
