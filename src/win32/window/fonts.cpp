#include "win32/window/fonts.h"

#include <algorithm>
#include <cmath>

#include "forms/units.h"
#include "win32/error.h"
#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

LOGFONTW userFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  require(SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0,
                                     USER_DEFAULT_SCREEN_DPI),
          "SystemParametersInfoForDpi");
  return metrics.lfMessageFont;
}

/// What a text is drawn with; everything is as it was when this goes.
class TextSettings {
public:
  TextSettings(HDC context, HFONT font, Color color) : context_(context), saved_(SaveDC(context)) {
    SelectObject(context, font);
    SetTextColor(context, color);
    SetBkMode(context, TRANSPARENT);
  }
  TextSettings(const TextSettings&) = delete;
  TextSettings& operator=(const TextSettings&) = delete;
  ~TextSettings() { RestoreDC(context_, saved_); }

private:
  HDC context_;
  int saved_;
};

const wchar_t* wideData(TextView text) {
  return reinterpret_cast<const wchar_t*>(text.data());
}

}  // namespace

FontHandle makeFont(const FontSpec& font, double scale) {
  LOGFONTW description = userFont();
  double twips = std::abs(description.lfHeight) * kTwipsPerPixel;
  if (!font.name.empty()) {
    description = {};
    description.lfCharSet = DEFAULT_CHARSET;
    // What the system goes by when it has to find another typeface.
    description.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    const auto name = font.name.substr(0, LF_FACESIZE - 1);
    std::copy(name.begin(), name.end(), std::begin(description.lfFaceName));
  }
  if (font.points > 0) twips = font.points * kTwipsPerPoint;
  if (font.bold) description.lfWeight = FW_BOLD;
  description.lfHeight = -std::max(1L, std::lround(twips * scale));
  return FontHandle(require(CreateFontIndirectW(&description), "CreateFontIndirect"));
}

void drawTextAt(HDC context, const PixelRect& area, TextView text, int x, int y, HFONT font, Color color) {
  const TextSettings settings(context, font, color);
  const RECT clip{area.left, area.top, area.left + area.width, area.top + area.height};
  ExtTextOutW(context, x, y, ETO_CLIPPED, &clip, wideData(text), static_cast<UINT>(text.size()), nullptr);
}

void drawTextIn(HDC context, TextView text, RECT area, TextPlace place, HFONT font, Color color) {
  const TextSettings settings(context, font, color);
  const UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_NOCLIP;
  DrawTextW(context, wideData(text), static_cast<int>(text.size()), &area,
            format | (place == TextPlace::Centre ? DT_CENTER : DT_LEFT));
}

}  // namespace fiar::win32
