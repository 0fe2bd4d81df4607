#include <windows.h>

#include <array>

#include "platform/platform.h"
#include "win32/error.h"
#include "win32/wide_text.h"

namespace fiar {
namespace {

// Longer than any date or time format that can be set.
using FormatBuffer = std::array<wchar_t, 256>;
constexpr int kBufferSize = static_cast<int>(FormatBuffer{}.size());

char16_t userDecimalSeparator() {
  FormatBuffer buffer{};
  win32::require(GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, buffer.data(), kBufferSize),
                 "GetLocaleInfoEx");
  return buffer[0] == L'\0' ? u'.' : static_cast<char16_t>(buffer[0]);
}

class Win32RegionalFormat final : public RegionalFormat {
public:
  char16_t decimalSeparator() const override { return separator_; }

  Text dateTimeText(const DateTime& when) const override {
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(when.year);
    time.wMonth = static_cast<WORD>(when.month);
    time.wDay = static_cast<WORD>(when.day);
    time.wHour = static_cast<WORD>(when.hour);
    time.wMinute = static_cast<WORD>(when.minute);
    time.wSecond = static_cast<WORD>(when.second);
    FormatBuffer date{};
    win32::require(GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date.data(),
                                   kBufferSize, nullptr),
                   "GetDateFormatEx");
    FormatBuffer clock{};
    win32::require(GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, nullptr, clock.data(), kBufferSize),
                   "GetTimeFormatEx");
    return win32::fromWide(date.data()) + u" " + win32::fromWide(clock.data());
  }

private:
  // Read once, so that a number is read back as it was written even when the user changes the setting
  // meanwhile.
  char16_t separator_ = userDecimalSeparator();
};

}  // namespace

const RegionalFormat& systemRegionalFormat() {
  static const Win32RegionalFormat format;
  return format;
}

}  // namespace fiar
