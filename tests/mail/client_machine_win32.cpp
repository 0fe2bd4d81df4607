#include "mail/client_machine.h"
#include "platform/win32/win32_events.h"
#include "platform/win32/win32_socket.h"

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <vector>

namespace fiar::test {
namespace {

// What the system tells of all handles, in the form that winternl.h leaves out. GetProcessHandleCount() would
// do, but Wine always answers 0.
constexpr auto kHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
constexpr auto kTooShort = static_cast<NTSTATUS>(0xC0000004);
struct HandleEntry {
  ULONG process;
  ULONG kindAndValue;
  void* object;
  ULONG access;
};

std::size_t kernelHandles() {
  std::vector<HandleEntry> buffer(1U << 16U);
  ULONG used = 0;
  while (NtQuerySystemInformation(kHandleInformation, buffer.data(),
                                  static_cast<ULONG>(buffer.size() * sizeof buffer[0]), &used) == kTooShort) {
    buffer.resize(buffer.size() * 2);
  }
  // The number of the entries comes first, in the room of a pointer.
  const std::size_t count = buffer.front().process;
  const auto* const entries =
      reinterpret_cast<const HandleEntry*>(reinterpret_cast<const char*>(buffer.data()) + sizeof(void*));
  return static_cast<std::size_t>(std::count_if(entries, entries + count, [](const HandleEntry& entry) {
    return entry.process == GetCurrentProcessId();
  }));
}

std::size_t hiddenWindows() {
  std::size_t count = 0;
  HWND window = nullptr;
  while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) ++count;
  }
  return count;
}

}  // namespace

PendingEvents& machineEvents() {
  static win32::Win32Events events;
  return events;
}

SocketFactory& machineSockets() {
  static win32::Win32Sockets sockets;
  return sockets;
}

std::size_t openHandles() {
  return kernelHandles() + hiddenWindows();
}

std::size_t privateMemory() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

}  // namespace fiar::test
