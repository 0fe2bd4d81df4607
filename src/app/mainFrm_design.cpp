// How the window looks when it is made: every control with the properties of its design, in twips.

#include "app/mainFrm.h"

namespace fiar {
namespace {

constexpr Color kBoardColor = 0x00E2F3FE;
constexpr Color kBackgroundColor = 0x006F6F6F;
constexpr Color kSoundTextColor = 0x00C0FFFF;
constexpr Color kLightRed = 0x008080FF;
constexpr Color kDarkRed = 0x000000C0;
constexpr Color kLightBlue = 0x00FF8080;
constexpr Color kDarkBlue = 0x00C00000;
constexpr Color kYellow = 0x0000FFFF;

constexpr int kTickMilliseconds = 5;

void place(Control& control, double left, double top, double width, double height) {
  control.Left = left;
  control.Top = top;
  control.Width = width;
  control.Height = height;
}

void designSwatches(Swatches& swatches, double top, const std::array<Color, 3>& colors) {
  constexpr std::array<double, 3> kLefts{12180, 12840, 13500};
  for (std::size_t i = 0; i < swatches.size(); ++i) {
    place(swatches[i], kLefts[i], top, 615, 735);
    swatches[i].BackColor = colors[i];
    swatches[i].Visible = false;
  }
}

}  // namespace

void mainFrm::designControls() {
  form.Caption = u"Five in a Row";
  form.Width = 12060;
  form.Height = 10170;
  form.BackColor = kBackgroundColor;
  form.Icon.resource = u"ICON";

  place(scoreLabel[0], 105, 930, 795, 435);
  place(scoreLabel[1], 1005, 930, 795, 435);
  scoreLabel[0].AccessibleName = u"Games won by you";
  scoreLabel[1].AccessibleName = u"Games won by the computer";
  // The sides' dark colours: the background is light where the labels stand.
  scoreLabel[0].ForeColor = kDarkRed;
  scoreLabel[1].ForeColor = kDarkBlue;
  for (Label& label : scoreLabel) {
    label.Caption = u"0";
    label.Font = {u"Arial", 20.25, true};
  }

  place(Combo1, 120, 1800, 1695, 315);
  Combo1.AccessibleName = u"Board size";

  place(Command1, 120, 2220, 1695, 555);
  Command1.Caption = u"Start";
  Command1.FocusWhenShown = true;

  place(Check1, 180, 9720, 1455, 315);
  Check1.Caption = u"Sound";
  Check1.Value = 1;
  Check1.ForeColor = kSoundTextColor;
  Check1.Font = {u"Arial", 12, true};

  Timer1.Interval = kTickMilliseconds;
  Timer1.Enabled = true;
  form.timers = {&Timer1};

  designBoardPictures();
  designHiddenControls();
  // In tab order.
  form.add(&Picture1);
  for (const ControlRef control : std::initializer_list<ControlRef>{
           scoreLabel.data(), &scoreLabel[1], &Combo1, &Command1, &Picture2, &Picture3, &boardPic, &Check1}) {
    form.add(control, &Picture1);
  }
  form.add(&Command2);
  form.add(&debugPic);
  for (Swatches* swatches : {&redColorPic, &blueColorPic}) {
    for (PictureBox& swatch : *swatches) form.add(&swatch);
  }
}

void mainFrm::designBoardPictures() {
  place(Picture1, 0, 0, 12090, 10200);
  Picture1.BackColor = kBackgroundColor;
  Picture1.Picture.resource = u"BACKGROUND";

  place(boardPic, 1965, 90, 9960, 9960);
  boardPic.BackColor = kBoardColor;
  boardPic.TabStop = true;
  boardPic.AccessibleName = u"Board";

  place(Picture2, 60, 2820, 1785, 2355);
  Picture2.Picture.resource = u"PICTURE2";
  place(Picture3, 60, 5190, 1785, 2355);
  Picture3.Picture.resource = u"PICTURE3";
  Picture3.Visible = false;
}

// To the right of the window's edge: read and written by the game, never seen.
void mainFrm::designHiddenControls() {
  place(Command2, 12180, 120, 1575, 555);
  Command2.Caption = u"Play 2";
  Command2.Visible = false;
  designSwatches(redColorPic, 780, {kLightRed, kDarkRed, kYellow});
  designSwatches(blueColorPic, 1560, {kLightBlue, kDarkBlue, kYellow});
  place(debugPic, 12180, 4200, 1800, 5985);
  debugPic.BackColor = kWhite;
  debugPic.Visible = false;
}

}  // namespace fiar
