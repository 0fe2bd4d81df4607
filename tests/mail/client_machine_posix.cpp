#include <filesystem>
#include <iterator>

#include "mail/client_machine.h"
#include "platform/posix/posix_events.h"
#include "platform/posix/posix_socket.h"

namespace fiar::test {

ClientMachine clientMachine() {
  static PosixEvents events;
  static PosixSockets sockets(events);
  return {events, sockets};
}

Holdings holdings() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return {static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors))), 0};
}

}  // namespace fiar::test
