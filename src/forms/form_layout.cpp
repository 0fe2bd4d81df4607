#include "forms/form_layout.h"

#include <algorithm>
#include <cmath>

#include "forms/units.h"

namespace fiar {
namespace {

int toPixels(double twips, double scale) {
  return static_cast<int>(std::lround(twips * scale));
}

}  // namespace

FormLayout::FormLayout(const Form& form, PixelSize area) : scale_(scaleThatFits(form, area)) {
  const PixelSize shown = areaAt(form, scale_);
  left_ = std::max(0, (area.width - shown.width) / 2);
  top_ = std::max(0, (area.height - shown.height) / 2);
}

PixelRect FormLayout::place(const Control& control) const {
  const PixelRect own = corner(&control);
  const PixelRect container = corner(control.Container);
  const bool inContainer = control.Container != nullptr;
  return {.left = own.left - (inContainer ? container.left : 0),
          .top = own.top - (inContainer ? container.top : 0),
          .width = std::max(1, toPixels(control.Width, scale_)),
          .height = std::max(1, toPixels(control.Height, scale_))};
}

PixelRect FormLayout::corner(const Control* control) const {
  double left = 0;
  double top = 0;
  for (; control != nullptr; control = control->Container) {
    left += control->Left;
    top += control->Top;
  }
  return {.left = left_ + toPixels(left, scale_), .top = top_ + toPixels(top, scale_)};
}

PixelSize areaAt(const Form& form, double scale) {
  return {.width = std::max(1, toPixels(form.Width, scale)),
          .height = std::max(1, toPixels(form.Height, scale))};
}

double scaleThatFits(const Form& form, PixelSize area) {
  return std::min(area.width / form.Width, area.height / form.Height);
}

double designScale(unsigned dotsPerInch) {
  return dotsPerInch / kTwipsPerInch;
}

PixelSize areaWhileDragging(const Form& form, PixelSize asked, DraggedEdges edges, double least,
                            double most) {
  const double byWidth = asked.width / form.Width;
  const double byHeight = asked.height / form.Height;
  double scale = std::max(byWidth, byHeight);
  if (edges == DraggedEdges::Side) scale = byWidth;
  if (edges == DraggedEdges::TopOrBottom) scale = byHeight;
  return areaAt(form, std::max(least, std::min(scale, most)));
}

}  // namespace fiar
