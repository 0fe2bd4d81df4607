#pragma once

namespace fiar {

/// What happened outside while a handler was running: input, timers, sockets.
class PendingEvents {
public:
  virtual ~PendingEvents() = default;

  /// Delivers every event that is waiting and returns at once.
  virtual void process() = 0;
  /// Sleeps until an event arrives, at most `seconds` (>= 0), then delivers what is waiting.
  virtual void waitAndProcess(double seconds) = 0;
};

}  // namespace fiar
