#include "win32/services/events.h"

#include <algorithm>
#include <cmath>

#include "win32/error.h"

namespace fiar::win32 {
namespace {

constexpr double kLongestWait = 86400;

// Rounded up: a wait that is cut short would be repeated without rest.
DWORD milliseconds(double seconds) {
  const double limited = seconds > 0 ? std::min(seconds, kLongestWait) : 0;
  return static_cast<DWORD>(std::ceil(limited * 1000));
}

bool isAfter(DWORD time, DWORD start) {
  return static_cast<LONG>(time - start) > 0;
}

}  // namespace

void Win32Events::process() {
  // Timers and painting make messages for ever where their handlers are slow, so what comes up after this
  // moment is left for the next time.
  const DWORD start = GetTickCount();
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    receive(message);
    if (isAfter(message.time, start)) return;
  }
}

void Win32Events::waitAndProcess(double seconds) {
  MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds(seconds), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  process();
}

int Win32Events::runUntilQuit() {
  MSG message{};
  while (!exitCode_) {
    if (GetMessageW(&message, nullptr, 0, 0) < 0) throwLastError("GetMessage");
    receive(message);
  }
  return *exitCode_;
}

void Win32Events::receive(const MSG& message) {
  if (message.message == WM_QUIT) {
    if (!exitCode_) exitCode_ = static_cast<int>(message.wParam);
    return;
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

}  // namespace fiar::win32
