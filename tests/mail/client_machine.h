#pragma once

#include <cstddef>

#include "platform/pending_events.h"
#include "platform/socket_control.h"

namespace fiar::test {

/// This machine's pending events and the sockets that go with them, for the life of the process.
struct ClientMachine {
  PendingEvents& events;
  SocketFactory& sockets;
};
ClientMachine clientMachine();

/// What this process holds, as far as it can be told; a leak of hundreds shows.
struct Holdings {
  std::size_t handles;  ///< descriptors, or handles and hidden windows
  std::size_t memory;   ///< its own, in bytes; 0 where a leak checker watches it instead
};
Holdings holdings();

}  // namespace fiar::test
