#include <filesystem>
#include <iterator>

#include "mail/client_machine.h"
#include "platform/posix/posix_events.h"
#include "platform/posix/posix_socket.h"

namespace fiar::test {
namespace {

PosixEvents& events() {
  static PosixEvents posixEvents;
  return posixEvents;
}

}  // namespace

PendingEvents& machineEvents() {
  return events();
}

SocketFactory& machineSockets() {
  static PosixSockets sockets(events());
  return sockets;
}

std::size_t openHandles() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
}

std::size_t privateMemory() {
  return 0;
}

}  // namespace fiar::test
