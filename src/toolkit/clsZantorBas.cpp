#include "toolkit/clsZantorBas.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr double kSecondsPerDay = 86400;
// Far below half a day, so that midnight and a clock that was set back can be told apart.
constexpr double kLongestSleep = 3600;
// Less than the clock can tell is what rounding left over, not time to wait for.
constexpr double kShortestSleep = 1e-6;

// The words for yes; every other text, the words for no included, is no.
constexpr std::array<TextView, 9> kYesWords{u"DA", u"YES",   u"1",         u"TRUE",      u"-1",
                                            u"ON", u"VKLOP", u"VKLOPLJEN", u"VKLOPLJENO"};

// The seconds from one reading of the clock to the next; 0 where the clock was set back.
double passed(double from, double to) {
  const double step = to - from;
  // A jump back by more than half a day is midnight.
  return step < -kSecondsPerDay / 2 ? step + kSecondsPerDay : std::max(step, 0.0);
}

// Where the sample `k` of `n` is taken that lie at even distances in a text, all counted from 0.
std::size_t samplePosition(std::size_t length, int n, int k) {
  // Positions count from 1 until they are truncated: the sum may round up.
  const double position = static_cast<double>(length) / n * k + 1;
  return std::min(static_cast<std::size_t>(position), length) - 1;
}

// Adds the text's bytes in their wide form (low byte first) to those of `sum`, in a circle in each block.
void addBytes(TextView source, std::string& sum) {
  constexpr std::size_t kBlock = 2048;
  for (std::size_t block = 0; block < source.size(); block += kBlock) {
    // Deliberate: this counts bytes, but ends with the characters, so the second half of a block counts for
    // nothing.
    for (std::size_t j = 0; j < std::min(kBlock, source.size() - block); ++j) {
      const char16_t character = source[block + j / 2];
      char& byte = sum[j % sum.size()];
      byte = static_cast<char>(byte + (j % 2 == 0 ? character : character >> 8));
    }
  }
}

}  // namespace

bool clsZantorBas::IsRunningInIde() {
  return std::exchange(ideFlag_, std::int16_t{0}) != 0;
}

bool clsZantorBas::GetTF(TextView text) {
  const Text upper = toUpper(text);
  return std::find(kYesWords.begin(), kYesWords.end(), upper) != kYesWords.end();
}

Text clsZantorBas::dec2bin(Currency value, bool padTo8) {
  constexpr std::size_t kGroup = 8;
  Text digits;
  std::int32_t rest = value.toInt32();
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

}  // namespace fiar
