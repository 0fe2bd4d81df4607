#include <algorithm>
#include <ctime>

#include "platform/platform.h"

namespace fiar {
namespace {

class PosixClock final : public Clock {
public:
  double timer() const override {
    const timespec time = wallTime();
    const std::tm local = localTime(time);
    const int whole = (local.tm_hour * 60 + local.tm_min) * 60 + std::min(local.tm_sec, kLastSecond);
    return whole + static_cast<double>(time.tv_nsec) * 1e-9;
  }

  DateTime now() const override {
    const std::tm local = localTime(wallTime());
    return {.year = local.tm_year + 1900,
            .month = local.tm_mon + 1,
            .day = local.tm_mday,
            .hour = local.tm_hour,
            .minute = local.tm_min,
            .second = std::min(local.tm_sec, kLastSecond)};
  }

private:
  // A leap second counts as the second before it: no day has more than 86400.
  static constexpr int kLastSecond = 59;

  static timespec wallTime() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return time;
  }

  static std::tm localTime(const timespec& time) {
    std::tm local{};
    localtime_r(&time.tv_sec, &local);
    return local;
  }
};

}  // namespace

const Clock& systemClock() {
  static const PosixClock clock;
  return clock;
}

}  // namespace fiar
