#include <windows.h>

#include "platform/platform.h"

namespace fiar {
namespace {

class Win32Clock final : public Clock {
public:
  double timer() const override {
    const SYSTEMTIME local = localTime();
    const int whole = (local.wHour * 60 + local.wMinute) * 60 + local.wSecond;
    return whole + local.wMilliseconds / 1000.0;
  }

  DateTime now() const override {
    const SYSTEMTIME local = localTime();
    return {.year = local.wYear,
            .month = local.wMonth,
            .day = local.wDay,
            .hour = local.wHour,
            .minute = local.wMinute,
            .second = local.wSecond};
  }

private:
  static SYSTEMTIME localTime() {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    return local;
  }
};

}  // namespace

const Clock& systemClock() {
  static const Win32Clock clock;
  return clock;
}

}  // namespace fiar
