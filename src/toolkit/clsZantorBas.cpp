#include "toolkit/clsZantorBas.h"

#include <algorithm>
#include <array>
#include <utility>

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
  double last = platform_.clock.timer();
  double left = seconds;
  platform_.events.process();
  while (true) {
    const double now = platform_.clock.timer();
    left -= passed(last, now);
    last = now;
    if (!(left >= kShortestSleep)) return;
    platform_.events.waitAndProcess(std::min(left, kLongestSleep));
  }
}

}  // namespace fiar
