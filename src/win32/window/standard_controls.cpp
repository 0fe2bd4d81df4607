#include "win32/window/standard_controls.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>

#include "win32/error.h"
#include "win32/wide_text.h"
#include "win32/window/accessible_name.h"
#include "win32/window/check_box_drawing.h"
#include "win32/window/event_gate.h"
#include "win32/window/fonts.h"
#include "win32/window/pixel_buffer.h"
#include "win32/window/window.h"

namespace fiar::win32 {
namespace {

// Height of the list of a closed combo box, in items: enough for all that it will ever be asked to show.
constexpr int kDroppedItems = 12;
// From the left edge of an item to its text, in twips.
constexpr double kItemIndent = 60;

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

}  // namespace

void useVisualStyles() {
  INITCOMMONCONTROLSEX classes{};
  classes.dwSize = sizeof(classes);
  classes.dwICC = ICC_STANDARD_CLASSES;
  // Without them the controls merely look plain.
  InitCommonControlsEx(&classes);
}

void StandardControl::createOfClass(const wchar_t* className, TextView caption, DWORD style, HWND container) {
  window_.reset(
      require(CreateWindowExW(0, className, toWide(caption).c_str(), WS_CHILD | WS_CLIPSIBLINGS | style, 0, 0,
                              1, 1, container, nullptr, GetModuleHandleW(nullptr), nullptr),
              "CreateWindowEx"));
  SetWindowLongPtrW(window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(static_cast<ControlWindow*>(this)));
  require(SetWindowSubclass(window(), &StandardControl::subclass, 0, reinterpret_cast<DWORD_PTR>(this)),
          "SetWindowSubclass");
}

// The name is given when the first screen reader asks for what the window is: few users have one, and the
// system's part in it is slow to load.
LRESULT CALLBACK StandardControl::subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR /*id*/, DWORD_PTR control) {
  auto* const self = reinterpret_cast<StandardControl*>(control);
  if (message == WM_GETOBJECT && !self->named_) {
    self->named_ = true;
    self->accessibleNameChanged();
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

Text StandardControl::accessibleName() const {
  return Text(control().AccessibleName);
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

LabelWindow::LabelWindow(const Label& label, const ControlSurroundings& surroundings)
    : StandardControl(label, label.Font, surroundings), label_(label) {}

void LabelWindow::createWindow(HWND container) {
  createOfClass(WC_STATICW, label_.Caption, SS_OWNERDRAW, container);
}

void LabelWindow::update() {
  if (label_.Caption == shownCaption_ && label_.ForeColor == shownColor_) return;
  shownCaption_ = label_.Caption;
  shownColor_ = label_.ForeColor;
  SetWindowTextW(window(), toWide(shownCaption_).c_str());
  accessibleNameChanged();
  InvalidateRect(window(), nullptr, FALSE);
}

// With the text, which the name alone would keep from being said.
Text LabelWindow::accessibleName() const {
  if (label_.AccessibleName.empty()) return {};
  return Text(label_.AccessibleName) + u": " + shownCaption_;
}

void LabelWindow::onDraw(const DRAWITEMSTRUCT& drawing) {
  const PixelBuffer buffer(clientSize(window()));
  copyBackground(window(), buffer);
  drawTextIn(buffer.context(), shownCaption_, drawing.rcItem, TextPlace::Centre, font(), shownColor_);
  buffer.show(drawing.hDC, drawing.rcItem);
}

CommandButtonWindow::CommandButtonWindow(CommandButton& button, const ControlSurroundings& surroundings)
    : StandardControl(button, button.Font, surroundings), button_(button) {}

void CommandButtonWindow::createWindow(HWND container) {
  createOfClass(WC_BUTTONW, button_.Caption, WS_TABSTOP | BS_PUSHBUTTON, container);
  shownCaption_ = button_.Caption;
}

void CommandButtonWindow::update() {
  if (button_.Caption == shownCaption_) return;
  shownCaption_ = button_.Caption;
  SetWindowTextW(window(), toWide(shownCaption_).c_str());
}

void CommandButtonWindow::onCommand(UINT code) {
  if (code != BN_CLICKED) return;
  gate().raise([this] {
    if (button_.Click) button_.Click();
  });
}

CheckBoxWindow::CheckBoxWindow(CheckBox& box, const ControlSurroundings& surroundings)
    : StandardControl(box, box.Font, surroundings), box_(box) {}

void CheckBoxWindow::createWindow(HWND container) {
  createOfClass(WC_BUTTONW, box_.Caption, WS_TABSTOP | BS_AUTOCHECKBOX, container);
  shownCaption_ = box_.Caption;
}

void CheckBoxWindow::fit(PixelSize size, double scale) {
  scale_ = scale;
  StandardControl::fit(size, scale);
}

void CheckBoxWindow::update() {
  if (box_.Caption != shownCaption_) {
    shownCaption_ = box_.Caption;
    SetWindowTextW(window(), toWide(shownCaption_).c_str());
  }
  if (box_.Value != shownValue_) {
    shownValue_ = box_.Value;
    SendMessageW(window(), BM_SETCHECK, static_cast<WPARAM>(shownValue_), 0);
  }
}

void CheckBoxWindow::onCommand(UINT code) {
  if (code != BN_CLICKED) return;
  gate().raise([this] {
    shownValue_ = static_cast<int>(SendMessageW(window(), BM_GETCHECK, 0, 0));
    box_.Value = shownValue_;
    if (box_.Click) box_.Click();
  });
}

std::optional<LRESULT> CheckBoxWindow::onNotify(const NMHDR& notification) {
  if (notification.code != static_cast<UINT>(NM_CUSTOMDRAW)) return std::nullopt;
  const auto& drawing = reinterpret_cast<const NMCUSTOMDRAW&>(notification);
  // Drawn whole at the first stage, whichever comes first here or there.
  if (drawing.dwDrawStage != CDDS_PREERASE && drawing.dwDrawStage != CDDS_PREPAINT) return CDRF_DODEFAULT;
  draw(drawing.hdc, static_cast<UINT>(SendMessageW(window(), BM_GETSTATE, 0, 0)));
  return CDRF_SKIPDEFAULT;
}

void CheckBoxWindow::draw(HDC context, UINT state) const {
  const PixelBuffer buffer(clientSize(window()));
  const RECT area{0, 0, buffer.size().width, buffer.size().height};
  drawCheckBox(buffer, {.value = static_cast<int>(SendMessageW(window(), BM_GETCHECK, 0, 0)),
                        .pressed = (state & BST_PUSHED) != 0,
                        .focused = focusShows() && GetFocus() == window(),
                        .caption = box_.Caption,
                        .textColor = box_.ForeColor,
                        .backColor = box_.BackColor,
                        .font = font(),
                        .scale = scale_});
  buffer.show(context, area);
}

ComboBoxWindow::ComboBoxWindow(ComboBox& box, const ControlSurroundings& surroundings)
    : StandardControl(box, box.Font, surroundings), box_(box) {}

void ComboBoxWindow::createWindow(HWND container) {
  createOfClass(WC_COMBOBOXW, {},
                WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, container);
}

void ComboBoxWindow::fit(PixelSize size, double scale) {
  indent_ = static_cast<int>(std::lround(kItemIndent * scale));
  StandardControl::fit(size, scale);
  // The class decides on its height: that of the field with what it draws about it.
  constexpr auto kField = static_cast<WPARAM>(-1);
  RECT whole{};
  GetWindowRect(window(), &whole);
  const auto field = static_cast<int>(SendMessageW(window(), CB_GETITEMHEIGHT, kField, 0));
  const int frame = static_cast<int>(whole.bottom - whole.top) - field;
  const int item = std::max(1, size.height - frame);
  SendMessageW(window(), CB_SETITEMHEIGHT, kField, item);
  SendMessageW(window(), CB_SETITEMHEIGHT, 0, item);
  SetWindowPos(window(), nullptr, 0, 0, size.width, size.height + kDroppedItems * item,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
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
  const bool marked = (drawing.itemState & ODS_SELECTED) != 0 && (!field || focusShows());
  FillRect(drawing.hDC, &drawing.rcItem, GetSysColorBrush(marked ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  if (drawing.itemID >= box_.items().size()) return;
  RECT text = drawing.rcItem;
  text.left += indent_;
  drawTextIn(drawing.hDC, box_.items()[drawing.itemID], text, TextPlace::Left, font(),
             GetSysColor(marked ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
}

void ComboBoxWindow::showFocus(bool shows) {
  StandardControl::showFocus(shows);
  if (window() != nullptr) InvalidateRect(window(), nullptr, FALSE);
}

void ComboBoxWindow::onCommand(UINT code) {
  // The selection is read again when the list closes: giving up puts the old one back without a word.
  if (code != CBN_SELCHANGE && code != CBN_CLOSEUP) return;
  shownIndex_ = static_cast<int>(SendMessageW(window(), CB_GETCURSEL, 0, 0));
  if (shownIndex_ == box_.ListIndex()) return;
  gate().raise([this] { box_.setListIndex(shownIndex_); });
}

}  // namespace fiar::win32
