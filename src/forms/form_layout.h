#pragma once

#include "forms/form.h"
#include "forms/pixels.h"

namespace fiar {

/// Where a form's controls lie in a client area of some size, in pixels. The one place where twips become
/// pixels: the form is shown as large as the area allows, in the middle of it, with its proportions kept.
class FormLayout {
public:
  /// Nothing has a place before there is an area.
  FormLayout() = default;
  FormLayout(const Form& form, PixelSize area);

  /// Pixels per twip.
  double scale() const { return scale_; }
  /// The control's place in its container's window, or in the client area. Equal sizes in twips give equal
  /// sizes in pixels wherever the control lies, so a square stays a square; none is smaller than one pixel.
  PixelRect place(const Control& control) const;

private:
  /// Where a control's top left corner lies in the client area.
  PixelRect corner(const Control* control) const;

  double scale_ = 0;
  int left_ = 0;
  int top_ = 0;
};

/// The smallest client area that shows the whole form at a scale (pixels per twip).
PixelSize areaAt(const Form& form, double scale);

/// The largest scale at which the whole form fits into an area.
double scaleThatFits(const Form& form, PixelSize area);

/// The scale at which the form has the size of its design on a monitor of so many dots per inch.
double designScale(unsigned dotsPerInch);

/// Which edges of a window the user drags.
enum class DraggedEdges { Side, TopOrBottom, Corner };

/// The client area with the form's proportions that is nearest to the one that the user asks for by dragging.
/// What is dragged decides; a corner takes the larger of both scales.
/// \param least, most the limits of the scale; `most` gives way when they contradict each other.
PixelSize areaWhileDragging(const Form& form, PixelSize asked, DraggedEdges edges, double least, double most);

}  // namespace fiar
