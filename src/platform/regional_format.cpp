#include "platform/regional_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace fiar {
namespace {

constexpr int kSignificantDigits = 15;
// More than a number of so many digits takes, with sign and exponent.
constexpr std::size_t kMaxNumberLength = 32;

// The character of the portable form that stands for one of the regional form; NUL when none does.
char portable(char16_t character, char16_t separator) {
  if (character == separator) return '.';
  if (character >= u'0' && character <= u'9') return static_cast<char>(character);
  if (character == u'+' || character == u'-') return static_cast<char>(character);
  return character == u'E' || character == u'e' ? 'e' : '\0';
}

// Zero and NaN are shown without a sign.
double withoutEmptySign(double value) {
  if (std::isnan(value)) return std::numeric_limits<double>::quiet_NaN();
  return value == 0 ? 0.0 : value;
}

}  // namespace

Text RegionalFormat::numberText(double value) const {
  std::array<char, kMaxNumberLength> digits{};
  const double shown = withoutEmptySign(value);
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), shown,
                                     std::chars_format::general, kSignificantDigits);
  Text text(digits.data(), written.ptr);
  for (char16_t& digit : text) {
    if (digit == u'.') digit = decimalSeparator();
    if (digit == u'e') digit = u'E';
  }
  return text;
}

std::optional<double> RegionalFormat::number(TextView text) const {
  const TextView trimmed = trimSpaces(text.substr(0, text.find(u'\0')));
  const char16_t separator = decimalSeparator();
  std::string digits(trimmed.size(), '\0');
  std::transform(trimmed.begin(), trimmed.end(), digits.begin(),
                 [separator](char16_t character) { return portable(character, separator); });
  // A plus sign is fine, but the conversion below does not know it.
  const bool plus = digits.starts_with('+') && !digits.starts_with("+-");
  const char* const end = digits.data() + digits.size();
  double value = 0;
  const auto read = std::from_chars(digits.data() + (plus ? 1 : 0), end, value);
  if (read.ec != std::errc{} || read.ptr != end) return std::nullopt;
  return value;
}

}  // namespace fiar
