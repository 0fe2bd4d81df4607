#pragma once

#include <windows.h>

#include "forms/pixels.h"
#include "platform/text.h"

namespace fiar::win32 {

class PixelBuffer;

/// How a check box looks at the moment.
struct CheckBoxLook {
  int value = 0;  ///< 0 unchecked, 1 checked, 2 greyed
  bool pressed = false;
  bool focused = false;
  TextView caption;
  Color textColor = kBlack;
  Color backColor = kWhite;
  HFONT font = nullptr;
  double scale = 0;  ///< pixels per twip
};

/// Draws a check box that fills the buffer.
void drawCheckBox(const PixelBuffer& buffer, const CheckBoxLook& look);

}  // namespace fiar::win32
