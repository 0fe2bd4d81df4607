#include <filesystem>
#include <iterator>

#include "mail/client_machine.h"
#include "platform/posix/posix_events.h"
#include "platform/posix/posix_socket.h"

namespace fiar::test {

PendingEvents& pendingEvents() {
  static PosixEvents events;
  return events;
}

std::unique_ptr<SocketControl> newSocket() {
  static PosixSockets sockets(static_cast<PosixEvents&>(pendingEvents()));
  return sockets.newSocket();
}

Holdings holdings() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return {static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors))), 0};
}

}  // namespace fiar::test
