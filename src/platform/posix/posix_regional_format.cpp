#include <ctime>
#include <iterator>
#include <locale>
#include <sstream>
#include <stdexcept>

#include "platform/platform.h"

namespace fiar {
namespace {

// The locale of the environment, or the neutral one where that names a locale which is not installed.
std::locale userLocale() {
  try {
    return std::locale("");
  } catch (const std::runtime_error&) {
    return std::locale::classic();
  }
}

Text fromWide(std::wstring_view wide) {
  Text text;
  // The date formats of all locales are made of characters that take one code unit.
  for (const wchar_t character : wide) text.push_back(static_cast<char16_t>(character));
  return text;
}

class PosixRegionalFormat final : public RegionalFormat {
public:
  char16_t decimalSeparator() const override { return separator_; }

  Text dateTimeText(const DateTime& when) const override {
    std::tm time{};
    time.tm_year = when.year - 1900;
    time.tm_mon = when.month - 1;
    time.tm_mday = when.day;
    time.tm_hour = when.hour;
    time.tm_min = when.minute;
    time.tm_sec = when.second;
    constexpr std::wstring_view kShortDateAndTime = L"%x %X";
    std::wostringstream text;
    text.imbue(locale_);
    std::use_facet<std::time_put<wchar_t>>(locale_).put(std::ostreambuf_iterator<wchar_t>(text), text, L' ',
                                                        &time, kShortDateAndTime.data(),
                                                        kShortDateAndTime.data() + kShortDateAndTime.size());
    return fromWide(text.str());
  }

private:
  std::locale locale_ = userLocale();
  char16_t separator_ =
      static_cast<char16_t>(std::use_facet<std::numpunct<wchar_t>>(locale_).decimal_point());
};

}  // namespace

const RegionalFormat& systemRegionalFormat() {
  static const PosixRegionalFormat format;
  return format;
}

}  // namespace fiar
