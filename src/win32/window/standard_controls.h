#pragma once

#include "win32/handle.h"
#include "win32/window/control_window.h"

namespace fiar::win32 {

/// Gives the standard controls the looks of the user's system. To be called before the first window is made.
void useVisualStyles();

/// A control that the system has a window class for. What the user does to it comes through the form's
/// window.
class StandardControl : public ControlWindow {
public:
  HWND window() const override { return window_.get(); }

protected:
  StandardControl(const Control& control, const FontSpec& font, const ControlContext& context)
      : ControlWindow(control), handlers_(context.handlers), fontSpec_(font) {}

  /// Creates a window of one of the system's classes in the container.
  void createOfClass(const wchar_t* className, DWORD style, HWND container);
  /// Shows the caption. Returns whether another one was shown before.
  bool showCaption(const Text& caption);
  void fit(PixelSize size, double scale) override;

  /// What a screen reader calls the control; empty where the control's own text says it.
  virtual Text accessibleName() const;
  /// To be called when that has changed.
  void accessibleNameChanged() const;

  HandlerGuard& handlers() const { return handlers_; }
  HFONT font() const { return font_.get(); }

private:
  static LRESULT CALLBACK subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                   DWORD_PTR control);

  HandlerGuard& handlers_;
  const FontSpec& fontSpec_;
  Text shownCaption_;
  bool named_ = false;  ///< a screen reader has asked for the name
  FontHandle font_;     ///< outlives the window, which uses it
  WindowHandle window_;
};

/// Text on the picture of its container.
class LabelWindow final : public StandardControl {
public:
  LabelWindow(const Label& label, const ControlContext& context);
  void update() override;
  void onDraw(const DRAWITEMSTRUCT& drawing) override;

protected:
  void createWindow(HWND container) override;
  Text accessibleName() const override;

private:
  const Label& label_;
  Color shownColor_ = kBlack;
};

class CommandButtonWindow final : public StandardControl {
public:
  CommandButtonWindow(CommandButton& button, const ControlContext& context);
  void update() override;
  void onCommand(UINT code) override;

protected:
  void createWindow(HWND container) override;

private:
  CommandButton& button_;
  Text shownName_;
};

/// A check box on the picture of its container that grows with the form: it draws itself, mark and all.
class CheckBoxWindow final : public StandardControl {
public:
  CheckBoxWindow(CheckBox& box, const ControlContext& context);
  void update() override;
  void onCommand(UINT code) override;
  LRESULT onNotify(const NMHDR& notification) override;

protected:
  void createWindow(HWND container) override;
  void fit(PixelSize size, double scale) override;

private:
  void draw(HDC context) const;

  CheckBox& box_;
  int shownValue_ = 0;
  double scale_ = 0;  ///< pixels per twip
};

class ComboBoxWindow final : public StandardControl {
public:
  ComboBoxWindow(ComboBox& box, const ControlContext& context);
  void update() override;
  void onCommand(UINT code) override;
  void onDraw(const DRAWITEMSTRUCT& drawing) override;

protected:
  void createWindow(HWND container) override;
  void fit(PixelSize size, double scale) override;

private:
  /// Gives the closed box's field a height; returns the height of the whole box.
  int heightWithField(int height) const;

  ComboBox& box_;
  std::size_t shownItems_ = 0;
  int shownIndex_ = -1;
  int indent_ = 0;
};

}  // namespace fiar::win32
