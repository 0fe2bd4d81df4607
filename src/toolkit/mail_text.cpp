#include "toolkit/mail_text.h"

#include <algorithm>
#include <cstdint>

namespace fiar {
namespace {

constexpr TextView kBase64Digits = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kLettersAndDigits = 62;  ///< the first ones of the base64 digits

// Microseconds since the beginning of some month long ago; any that differ in time differ in number.
std::uint64_t timeStamp(const Clock& clock) {
  constexpr int kMonths = 12;
  constexpr int kDays = 31;
  constexpr std::uint64_t kMicrosecondsPerDay = 86'400'000'000;
  const DateTime today = clock.now();
  const int day = (today.year * kMonths + today.month) * kDays + today.day;
  return static_cast<std::uint64_t>(day) * kMicrosecondsPerDay +
         static_cast<std::uint64_t>(clock.timer() * 1e6);
}

}  // namespace

Text base64(std::string_view bytes) {
  constexpr std::size_t kGroup = 3;  // bytes that become four digits
  constexpr unsigned kDigitBits = 6;
  constexpr unsigned kDigitMask = 0x3F;
  Text result;
  result.reserve((bytes.size() + kGroup - 1) / kGroup * 4);
  for (; !bytes.empty(); bytes.remove_prefix(std::min(kGroup, bytes.size()))) {
    // Three bytes from the top down; missing ones count as zero bits.
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kGroup; ++i) {
      bits = bits << 8U | (i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : 0U);
    }
    for (std::size_t digit = 0; digit <= kGroup; ++digit) {
      const unsigned shift = kDigitBits * static_cast<unsigned>(kGroup - digit);
      result += digit <= bytes.size() ? kBase64Digits[bits >> shift & kDigitMask] : u'=';
    }
  }
  return result;
}

Text brokenIntoLines(TextView text, std::size_t width) {
  Text result;
  result.reserve(text.size() + text.size() / width * 2);
  for (std::size_t start = 0; start < text.size(); start += width) {
    if (start > 0) result += u"\r\n";
    result += text.substr(start, width);
  }
  return result;
}

std::vector<Text> listEntries(TextView list) {
  std::vector<Text> entries;
  if (list.empty()) return entries;
  std::size_t start = 0;
  for (std::size_t end = list.find(u';'); end != TextView::npos; end = list.find(u';', start)) {
    entries.emplace_back(list.substr(start, end - start));
    start = end + 1;
  }
  entries.emplace_back(list.substr(start));
  return entries;
}

Text uniqueText(const Platform& platform, std::size_t length) {
  std::uint64_t stamp = timeStamp(platform.clock);
  Text text;
  while (text.size() < length) {
    const auto random = static_cast<std::size_t>(platform.random.next() * kLettersAndDigits);
    text += kBase64Digits[(random + stamp) % kLettersAndDigits];
    stamp /= kLettersAndDigits;
  }
  return text;
}

}  // namespace fiar
