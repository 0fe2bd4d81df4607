#include "win32/window/standard_controls.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>

#include "forms/painter.h"
#include "forms/units.h"
#include "win32/error.h"
#include "win32/wide_text.h"
#include "win32/window/com.h"
#include "win32/window/fonts.h"
#include "win32/window/handler_guard.h"
#include "win32/window/keyboard.h"
#include "win32/window/pixel_buffer.h"
#include "win32/window/window.h"
// After <windows.h>, whose types it uses; the first one makes the identifiers of the second one's interfaces
// part of this file.
#include <initguid.h>
#include <oleacc.h>

namespace fiar::win32 {
namespace {

// From the left edge of an item to its text, in twips.
constexpr double kItemIndent = 60;

// A check box: the side of its square, from there to the caption (in twips), and its colours.
constexpr float kBoxSide = 210;
constexpr double kBoxGap = 90;
constexpr Color kBoxFrameColor = 0x00333333;
constexpr Color kBoxColor = kWhite;
constexpr Color kPressedBoxColor = 0x00D9D9D9;

/// Gives the buffer the picture that lies under a control.
void copyBackground(HWND control, const PixelBuffer& buffer) {
  const HWND container = GetParent(control);
  POINT corner{};
  MapWindowPoints(control, container, &corner, 1);
  POINT old{};
  SetViewportOrgEx(buffer.context(), -corner.x, -corner.y, &old);
  SendMessageW(container, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.context()), PRF_CLIENT);
  SetViewportOrgEx(buffer.context(), old.x, old.y, nullptr);
}

/// Draws the square of a check box and its mark.
/// \param value 0 unchecked, 1 checked, 2 greyed.
void drawMarkedBox(PictureBox& box, int value) {
  constexpr float kSide = kBoxSide;
  box.DrawWidth = 1;
  box.Line(0, 0, kSide, 0, kBoxFrameColor);
  box.Line(0, kSide, kSide, kSide, kBoxFrameColor);
  box.Line(0, 0, 0, kSide, kBoxFrameColor);
  box.Line(kSide, 0, kSide, kSide, kBoxFrameColor);
  box.DrawWidth = 2;
  if (value == 1) {
    box.Line(0.22F * kSide, 0.52F * kSide, 0.42F * kSide, 0.72F * kSide, kBoxFrameColor);
    box.Line(0.42F * kSide, 0.72F * kSide, 0.78F * kSide, 0.28F * kSide, kBoxFrameColor);
  } else if (value != 0) {
    box.DrawWidth = 6;
    box.Line(0.3F * kSide, 0.5F * kSide, 0.7F * kSide, 0.5F * kSide, kBoxFrameColor);
  }
}

/// Tells screen readers what to call a control. Where the system knows no such names, nothing happens.
void setAccessibleName(HWND window, TextView name) {
  IAccPropServices* services = nullptr;
  if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                              reinterpret_cast<void**>(&services)))) {
    return;
  }
  const ComPointer<IAccPropServices> owner(services);
  services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                           toWide(name).c_str());
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
}

}  // namespace

void useVisualStyles() {
  INITCOMMONCONTROLSEX classes{};
  classes.dwSize = sizeof(classes);
  classes.dwICC = ICC_STANDARD_CLASSES;
  // Without them the controls merely look plain.
  InitCommonControlsEx(&classes);
}

void StandardControl::createOfClass(const wchar_t* className, DWORD style, HWND container) {
  window_.reset(require(CreateWindowExW(0, className, L"", WS_CHILD | WS_CLIPSIBLINGS | style, 0, 0, 1, 1,
                                        container, nullptr, GetModuleHandleW(nullptr), nullptr),
                        "CreateWindowEx"));
  require(SetWindowSubclass(window(), &StandardControl::subclass, 0, reinterpret_cast<DWORD_PTR>(this)),
          "SetWindowSubclass");
}

bool StandardControl::showCaption(const Text& caption) {
  if (caption == shownCaption_) return false;
  shownCaption_ = caption;
  SetWindowTextW(window(), toWide(caption).c_str());
  return true;
}

// The accessible name is given when the first screen reader asks for what the window is: few users have one,
// and the system's part in it is slow to load.
LRESULT CALLBACK StandardControl::subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR /*id*/, DWORD_PTR control) {
  auto* const self = reinterpret_cast<StandardControl*>(control);
  if (message == WM_GETOBJECT && !self->named_) {
    self->named_ = true;
    self->accessibleNameChanged();
  }
  // What draws itself shows whether it has the focus.
  if (message == WM_UPDATEUISTATE) InvalidateRect(window, nullptr, FALSE);
  if (handleFormInput(window, message, wParam)) return 0;
  return DefSubclassProc(window, message, wParam, lParam);
}

Text StandardControl::accessibleName() const {
  return control().AccessibleName;
}

void StandardControl::accessibleNameChanged() const {
  const Text name = accessibleName();
  if (named_ && !name.empty()) setAccessibleName(window(), name);
}

void StandardControl::fit(PixelSize /*size*/, double scale) {
  FontHandle font = makeFont(fontSpec_, scale);
  SendMessageW(window(), WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
  font_ = std::move(font);
}

LabelWindow::LabelWindow(const Label& label, const ControlContext& context)
    : StandardControl(label, label.Font, context), label_(label) {}

void LabelWindow::createWindow(HWND container) {
  createOfClass(WC_STATICW, SS_OWNERDRAW, container);
}

void LabelWindow::update() {
  if (!showCaption(label_.Caption) && label_.ForeColor == shownColor_) return;
  shownColor_ = label_.ForeColor;
  accessibleNameChanged();
  InvalidateRect(window(), nullptr, FALSE);
}

// Name and caption: with a name alone, screen readers would not read the caption.
Text LabelWindow::accessibleName() const {
  if (label_.AccessibleName.empty()) return {};
  return label_.AccessibleName + u": " + label_.Caption;
}

void LabelWindow::onDraw(const DRAWITEMSTRUCT& drawing) {
  const PixelBuffer buffer(clientSize(window()));
  copyBackground(window(), buffer);
  drawTextIn(buffer.context(), label_.Caption, drawing.rcItem, TextPlace::Centre, font(), shownColor_);
  buffer.show(drawing.hDC, drawing.rcItem);
}

CommandButtonWindow::CommandButtonWindow(CommandButton& button, const ControlContext& context)
    : StandardControl(button, button.Font, context), button_(button) {}

void CommandButtonWindow::createWindow(HWND container) {
  createOfClass(WC_BUTTONW, WS_TABSTOP | BS_PUSHBUTTON, container);
}

void CommandButtonWindow::update() {
  if (button_.AccessibleName != shownName_) {
    shownName_ = button_.AccessibleName;
    accessibleNameChanged();
  }
  showCaption(button_.Caption);
}

void CommandButtonWindow::onCommand(UINT code) {
  if (code == BN_CLICKED) handlers().raise(button_.Click);
}

CheckBoxWindow::CheckBoxWindow(CheckBox& box, const ControlContext& context)
    : StandardControl(box, box.Font, context), box_(box) {}

void CheckBoxWindow::createWindow(HWND container) {
  createOfClass(WC_BUTTONW, WS_TABSTOP | BS_AUTOCHECKBOX, container);
}

void CheckBoxWindow::fit(PixelSize size, double scale) {
  scale_ = scale;
  StandardControl::fit(size, scale);
}

void CheckBoxWindow::update() {
  showCaption(box_.Caption);
  if (box_.Value != shownValue_) {
    shownValue_ = box_.Value;
    SendMessageW(window(), BM_SETCHECK, static_cast<WPARAM>(shownValue_), 0);
  }
}

void CheckBoxWindow::onCommand(UINT code) {
  if (code != BN_CLICKED) return;
  shownValue_ = static_cast<int>(SendMessageW(window(), BM_GETCHECK, 0, 0));
  box_.Value = shownValue_;
  handlers().raise(box_.Click);
}

LRESULT CheckBoxWindow::onNotify(const NMHDR& notification) {
  if (notification.code != static_cast<UINT>(NM_CUSTOMDRAW)) return 0;
  const auto& drawing = reinterpret_cast<const NMCUSTOMDRAW&>(notification);
  // Drawn whole at the first stage, whichever comes first here or there.
  if (drawing.dwDrawStage != CDDS_PREERASE && drawing.dwDrawStage != CDDS_PREPAINT) return CDRF_DODEFAULT;
  draw(drawing.hdc);
  return CDRF_SKIPDEFAULT;
}

void CheckBoxWindow::draw(HDC context) const {
  const PixelBuffer buffer(clientSize(window()));
  copyBackground(window(), buffer);

  const BitmapView whole = buffer.pixels();
  const int side = std::min(whole.height, std::max(1, static_cast<int>(std::lround(kBoxSide * scale_))));
  const int margin = (whole.height - side) / 2;
  PictureBox box;
  drawMarkedBox(box, static_cast<int>(SendMessageW(window(), BM_GETCHECK, 0, 0)));
  const bool pressed = (SendMessageW(window(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
  paint(box.drawing(), pressed ? kPressedBoxColor : kBoxColor,
        {.pixelsPerTwip = scale_, .pixelsPerDrawWidth = scale_ * kTwipsPerPixel},
        {whole.row(margin) + margin, side, side, whole.stride}, {});

  const RECT area{0, 0, whole.width, whole.height};
  RECT text = area;
  text.left = margin + side + static_cast<int>(std::lround(kBoxGap * scale_));
  drawTextIn(buffer.context(), box_.Caption, text, TextPlace::Left, font(), box_.ForeColor);
  if (focusShows(window())) {
    SetDCBrushColor(buffer.context(), box_.ForeColor);
    FrameRect(buffer.context(), &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  }
  buffer.show(context, area);
}

ComboBoxWindow::ComboBoxWindow(ComboBox& box, const ControlContext& context)
    : StandardControl(box, box.Font, context), box_(box) {}

void ComboBoxWindow::createWindow(HWND container) {
  createOfClass(WC_COMBOBOXW,
                WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, container);
}

void ComboBoxWindow::fit(PixelSize size, double scale) {
  indent_ = static_cast<int>(std::lround(kItemIndent * scale));
  StandardControl::fit(size, scale);
  // The height of the closed box is that of its field with a frame, whose height only the class knows.
  const int frame = heightWithField(size.height) - size.height;
  const int field = std::max(1, size.height - frame);
  heightWithField(field);
  SendMessageW(window(), CB_SETITEMHEIGHT, 0, field);
}

int ComboBoxWindow::heightWithField(int height) const {
  SendMessageW(window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height);
  RECT whole{};
  GetWindowRect(window(), &whole);
  return static_cast<int>(whole.bottom - whole.top);
}

void ComboBoxWindow::update() {
  for (; shownItems_ < box_.items().size(); ++shownItems_) {
    SendMessageW(window(), CB_ADDSTRING, 0,
                 reinterpret_cast<LPARAM>(toWide(box_.items()[shownItems_]).c_str()));
  }
  if (box_.ListIndex() != shownIndex_) {
    shownIndex_ = box_.ListIndex();
    SendMessageW(window(), CB_SETCURSEL, static_cast<WPARAM>(shownIndex_), 0);
  }
}

// The system's own drawing leaves the text at the top of a field that has grown with the form.
void ComboBoxWindow::onDraw(const DRAWITEMSTRUCT& drawing) {
  // The field of the closed box is marked as the list's items are, but only for those who use the keyboard.
  const bool field = (drawing.itemState & ODS_COMBOBOXEDIT) != 0;
  const bool marked = (drawing.itemState & ODS_SELECTED) != 0 && (!field || focusShows(window()));
  FillRect(drawing.hDC, &drawing.rcItem, GetSysColorBrush(marked ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  if (drawing.itemID >= box_.items().size()) return;
  RECT text = drawing.rcItem;
  text.left += indent_;
  drawTextIn(drawing.hDC, box_.items()[drawing.itemID], text, TextPlace::Left, font(),
             GetSysColor(marked ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
}

void ComboBoxWindow::onCommand(UINT code) {
  // Read again when the list closes: Escape restores the old selection without a notification.
  if (code != CBN_SELCHANGE && code != CBN_CLOSEUP) return;
  shownIndex_ = static_cast<int>(SendMessageW(window(), CB_GETCURSEL, 0, 0));
  if (shownIndex_ == box_.ListIndex()) return;
  const std::function<void()> select = [this] { box_.setListIndex(shownIndex_); };
  handlers().raise(select);
}

}  // namespace fiar::win32
