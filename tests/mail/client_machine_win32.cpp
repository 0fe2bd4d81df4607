#include "mail/client_machine.h"
#include "win32/services/events.h"
#include "win32/services/socket.h"

// After <windows.h>, which it needs.
#include <psapi.h>

namespace fiar::test {

PendingEvents& pendingEvents() {
  static win32::Win32Events events;
  return events;
}

std::unique_ptr<SocketControl> newSocket() {
  return std::make_unique<win32::Win32Socket>();
}

Holdings holdings() {
  // Handles are multiples of 4 from a table whose free places are used again. Windows are not in it.
  const win32::KernelHandle next(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  std::size_t handles = reinterpret_cast<std::size_t>(next.get()) / 4;
  HWND hidden = nullptr;
  while ((hidden = FindWindowExW(HWND_MESSAGE, hidden, L"FiveInARowSocket", nullptr)) != nullptr) ++handles;
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return {handles, counters.PagefileUsage};
}

}  // namespace fiar::test
