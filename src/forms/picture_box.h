#pragma once

#include "forms/controls.h"
#include "forms/drawing_list.h"

namespace fiar {

/// How the inside of a circle is painted.
enum class FillStyle : int { Solid = 0, Transparent = 1 };

/// A surface to draw on. Drawing appends commands to a list; showing the list is the host's business, so a
/// drawing operation costs next to nothing and can be repeated at every tick. All coordinates are in twips.
class PictureBox : public Control {
public:
  Color BackColor = kWhite;
  Color ForeColor = kBlack;  ///< of printed text
  FontSpec Font{u"Arial", 8.25, false};
  PictureRef Picture;
  bool TabStop = false;  ///< whether it takes the keyboard focus
  double KeyStep = 0;    ///< how far an arrow key moves the pointer while it has the focus; 0: not at all

  int DrawWidth = 1;  ///< width of lines and rims in pixels at 96 DPI, at least 1
  fiar::FillStyle FillStyle = fiar::FillStyle::Transparent;
  Color FillColor = kBlack;
  float CurrentX = 0;  ///< where the next text is printed
  float CurrentY = 0;

  /// The pointer moved over the picture box or, with a button held that was pressed on it, anywhere.
  std::function<void(int button, int shift, float X, float Y)> MouseMove;
  /// A button was released over the picture box or, if it was pressed on it, anywhere.
  std::function<void(int button, int shift, float X, float Y)> MouseUp;
  /// Clears the picture to its background colour and puts the printing position back to the top left corner.
  void Cls();
  /// A straight line in DrawWidth.
  void Line(float x1, float y1, float x2, float y2, Color color);
  /// A circle about (x, y): its rim in `color` and DrawWidth, its inside by FillStyle and FillColor. A radius
  /// of 0 or less draws nothing.
  void Circle(float x, float y, float radius, Color color);
  /// Prints a line of text at (CurrentX, CurrentY) and moves on to the start of the next line.
  void Print(TextView text);

  /// What has been drawn since the last Cls.
  const DrawingList& drawing() const { return drawing_; }
  /// Changes with every drawing operation: as long as it stays the same, so does the drawing.
  std::uint64_t revision() const { return revision_; }

private:
  DrawingList drawing_;
  std::uint64_t revision_ = 0;
};

/// A position in a picture box, in twips.
struct PicturePoint {
  float x = 0;
  float y = 0;

  bool operator==(const PicturePoint&) const = default;
};

/// Steps of the arrow keys, in cells.
struct KeyMove {
  int columns = 0;
  int rows = 0;
};

/// Where the pointer goes when a key moves it: a picture box with a KeyStep is a grid of cells of that size,
/// and the pointer goes to the middle of the cell that lies `move` away from the one it is in. It never
/// leaves the picture, and comes back from outside; no move takes it to the middle of its own cell.
/// \param box its KeyStep must be positive.
PicturePoint movedByKey(const PictureBox& box, PicturePoint from, KeyMove move);

}  // namespace fiar
