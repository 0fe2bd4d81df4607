#pragma once

#include <poll.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>

#include "platform/platform.h"

namespace fiar {

/// Pending events that come from file descriptors, for instance sockets.
class PosixEvents final : public PendingEvents {
public:
  /// Called with the events that are ready (POLLIN, POLLOUT, and POLLERR, POLLHUP, POLLNVAL which need no
  /// asking).
  using Callback = std::function<void(short ready)>;

  /// Calls `callback` whenever one of `events` (POLLIN, POLLOUT, both or 0) is ready on `descriptor` while
  /// events are delivered: once for each delivery, for as long as it stays ready. Watching a descriptor again
  /// replaces its events and callback. The descriptor belongs to the caller, who calls unwatch() before
  /// closing it.
  void watch(int descriptor, short events, Callback callback);
  /// Ends the watch; nothing happens where there is none. A callback may watch and unwatch any descriptor,
  /// its own included; after this call the callback is not called again.
  void unwatch(int descriptor);

  void process() override;
  void waitAndProcess(double seconds) override;

private:
  struct Watch {
    short events = 0;
    // Shared, so that a callback outlives its own call when it ends its watch.
    std::shared_ptr<const Callback> callback;
  };

  void deliver(const timespec& limit);

  std::unordered_map<int, Watch> watches_;
};

}  // namespace fiar
