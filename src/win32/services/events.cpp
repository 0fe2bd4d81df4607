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
  while (!quitting_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      quitting_ = true;
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    dispatch(message);
    if (isAfter(message.time, start)) return;
  }
}

void Win32Events::waitAndProcess(double seconds) {
  // The request to quit waits in the queue and would end every wait at once.
  if (quitting_) {
    Sleep(milliseconds(seconds));
    return;
  }
  MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds(seconds), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  process();
}

int Win32Events::runUntilQuit() const {
  MSG message{};
  for (BOOL received = 0; (received = GetMessageW(&message, nullptr, 0, 0)) != 0;) {
    if (received < 0) throwLastError("GetMessage");
    dispatch(message);
  }
  return static_cast<int>(message.wParam);
}

void Win32Events::dispatch(MSG& message) const {
  if (filter_ && filter_(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

}  // namespace fiar::win32
