#include "toolkit/clsZantorBas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr double kSecondsPerDay = 86400;
// Far below half a day, so that midnight and a clock that was set back can be told apart.
constexpr double kLongestSleep = 3600;
// Below the resolution of the clock: what rounding leaves over, not time to wait for.
constexpr double kShortestSleep = 1e-6;

// The words for yes; every other text, the words for no included, is no.
constexpr std::array<TextView, 9> kYesWords{u"DA", u"YES",   u"1",         u"TRUE",      u"-1",
                                            u"ON", u"VKLOP", u"VKLOPLJEN", u"VKLOPLJENO"};

constexpr TextView kBase64Digits = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kLettersAndDigits = 62;  ///< the first ones of the base64 digits

// The seconds from one reading of the clock to the next; 0 where the clock was set back.
double passed(double from, double to) {
  const double step = to - from;
  // A jump back by more than half a day is midnight.
  return step < -kSecondsPerDay / 2 ? step + kSecondsPerDay : std::max(step, 0.0);
}

// The position of sample `k` of `n` evenly spaced ones in a text, all counted from 0.
std::size_t samplePosition(std::size_t length, int n, int k) {
  // Positions count from 1 until they are truncated: the sum may round up.
  const double position = static_cast<double>(length) / n * k + 1;
  return std::min(static_cast<std::size_t>(position), length) - 1;
}

// Adds the bytes of the wide characters (low byte first) to those of `sum`, over and over; each block of the
// text begins at the first byte again.
void addBytes(TextView source, std::string& sum) {
  constexpr std::size_t kBlock = 2048;
  for (std::size_t block = 0; block < source.size(); block += kBlock) {
    // Deliberate: one would expect the bytes to be counted against the block's bytes, not its characters. So
    // the second half of a block counts for nothing.
    for (std::size_t j = 0; j < std::min(kBlock, source.size() - block); ++j) {
      const char16_t character = source[block + j / 2];
      char& byte = sum[j % sum.size()];
      byte = static_cast<char>(byte + (j % 2 == 0 ? character : character >> 8));
    }
  }
}

// A number of four decimals as a whole one; of two that are equally near the even one counts, both times.
std::int32_t wholeNumber(double value) {
  constexpr double kUnit = 10000;
  const double whole = std::nearbyint(std::nearbyint(value * kUnit) / kUnit);
  using Limits = std::numeric_limits<std::int32_t>;
  if (whole >= Limits::min() && whole <= Limits::max()) return static_cast<std::int32_t>(whole);
  throw std::overflow_error("the number does not fit in 32 bits");
}

// Microseconds since a day long ago: a different number at every time.
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

bool clsZantorBas::IsRunningInIde() {
  return std::exchange(ideFlag_, std::int16_t{0}) != 0;
}

bool clsZantorBas::GetTF(TextView text) {
  const Text upper = toUpper(text);
  return std::find(kYesWords.begin(), kYesWords.end(), upper) != kYesWords.end();
}

Text clsZantorBas::dec2bin(double value, bool padTo8) {
  constexpr std::size_t kGroup = 8;
  Text digits;
  std::int32_t rest = wholeNumber(value);
  do {
    // The remainder of a negative number is -1; it is written as it is.
    const std::int32_t digit = rest % 2;
    digits.insert(0, digit < 0 ? u"-1" : digit == 0 ? u"0" : u"1");
    rest /= 2;
  } while (rest != 0);
  if (!padTo8) return digits;
  const std::size_t length = (digits.size() + kGroup - 1) / kGroup * kGroup;
  return Text(length - digits.size(), u'0') + digits;
}

void clsZantorBas::DelayEvents(double seconds) {
  const Platform& platform = toolkit_.platform();
  double last = platform.clock.timer();
  double left = seconds;
  platform.events.process();
  while (true) {
    const double now = platform.clock.timer();
    left -= passed(last, now);
    last = now;
    if (!(left >= kShortestSleep)) return;
    platform.events.waitAndProcess(std::min(left, kLongestSleep));
  }
}

Text clsZantorBas::MesajText(TextView text) {
  Text source(text);
  if (source.size() % 2 != 0) source += u'$';
  Text mixed;
  for (std::size_t j = 0; j < source.size() / 2; ++j) {
    mixed += source[2 * j + 1];
    mixed += source[source.size() - 2 * j - 2];
  }
  return mixed;
}

Text clsZantorBas::StrCheckSum2(TextView source, int n, bool hexOutput) {
  if (source.empty() || n < 1) return {};
  const CodePage& codePage = toolkit_.platform().codePage;
  Text sampled;
  for (int k = 0; k < n; ++k) sampled += source[samplePosition(source.size(), n, k)];
  std::string mixed = codePage.encode(sampled);
  addBytes(source, mixed);
  return toolkit_.codeCod().EnCodeLight(sampled, codePage.decode(mixed), hexOutput);
}

Text clsZantorBas::base64(std::string_view bytes) {
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

Text clsZantorBas::brokenIntoLines(TextView text, std::size_t width) {
  Text result;
  result.reserve(text.size() + text.size() / width * 2);
  for (std::size_t start = 0; start < text.size(); start += width) {
    if (start > 0) result += u"\r\n";
    result += text.substr(start, width);
  }
  return result;
}

Text clsZantorBas::uniqueText(std::size_t length) {
  const Platform& platform = toolkit_.platform();
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
