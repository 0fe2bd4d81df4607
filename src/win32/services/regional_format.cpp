#include <array>

#include "win32/error.h"
#include "win32/services/services.h"
#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

// Longer than any date or time format that can be set.
using FormatBuffer = std::array<wchar_t, 256>;
constexpr int kBufferSize = static_cast<int>(FormatBuffer{}.size());

char16_t userDecimalSeparator() {
  FormatBuffer buffer{};
  require(GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, buffer.data(), kBufferSize),
          "GetLocaleInfoEx");
  return buffer[0] == L'\0' ? u'.' : static_cast<char16_t>(buffer[0]);
}

}  // namespace

Win32RegionalFormat::Win32RegionalFormat() : separator_(userDecimalSeparator()) {}

Text Win32RegionalFormat::dateTimeText(const DateTime& when) const {
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(when.year);
  time.wMonth = static_cast<WORD>(when.month);
  time.wDay = static_cast<WORD>(when.day);
  time.wHour = static_cast<WORD>(when.hour);
  time.wMinute = static_cast<WORD>(when.minute);
  time.wSecond = static_cast<WORD>(when.second);
  FormatBuffer date{};
  require(GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date.data(), kBufferSize,
                          nullptr),
          "GetDateFormatEx");
  FormatBuffer clock{};
  require(GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, nullptr, clock.data(), kBufferSize),
          "GetTimeFormatEx");
  return fromWide(date.data()) + u" " + fromWide(clock.data());
}

}  // namespace fiar::win32
