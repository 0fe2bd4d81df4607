#pragma once

#include <cstddef>

#include "platform/platform.h"

namespace fiar::test {

/// This machine's pending events, for the life of the process, and a socket whose events are among them.
PendingEvents& pendingEvents();
std::unique_ptr<SocketControl> newSocket();

/// What this process holds, as far as it can be told; a leak of hundreds shows.
struct Holdings {
  std::size_t handles;  ///< descriptors, or handles and hidden windows
  std::size_t memory;   ///< its own, in bytes; 0 where a leak checker watches it instead
};
Holdings holdings();

}  // namespace fiar::test
