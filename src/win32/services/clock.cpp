#include "win32/services/services.h"

namespace fiar::win32 {
namespace {

SYSTEMTIME localTime() {
  SYSTEMTIME local{};
  GetLocalTime(&local);
  return local;
}

}  // namespace

double Win32Clock::timer() const {
  const SYSTEMTIME local = localTime();
  const int whole = (local.wHour * 60 + local.wMinute) * 60 + local.wSecond;
  return whole + local.wMilliseconds / 1000.0;
}

DateTime Win32Clock::now() const {
  const SYSTEMTIME local = localTime();
  return {.year = local.wYear,
          .month = local.wMonth,
          .day = local.wDay,
          .hour = local.wHour,
          .minute = local.wMinute,
          .second = local.wSecond};
}

}  // namespace fiar::win32
