#pragma once

#include <cstddef>

#include "platform/pending_events.h"
#include "platform/socket_control.h"

namespace fiar::test {

/// This machine's pending events and the sockets that go with them, for the life of the process.
PendingEvents& machineEvents();
SocketFactory& machineSockets();

/// How many descriptors, or handles and hidden windows, this process holds, as far as it can be told; a leak
/// of hundreds shows.
std::size_t openHandles();
/// The process's own memory in bytes; 0 where a leak checker watches it instead.
std::size_t privateMemory();

}  // namespace fiar::test
