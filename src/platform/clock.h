#pragma once

#include "platform/date_time.h"

namespace fiar {

/// The time of day.
class Clock {
public:
  virtual ~Clock() = default;

  /// Seconds since local midnight, 0 <= t < 86400, with the system's resolution.
  virtual double timer() const = 0;
  /// The current local date and time.
  virtual DateTime now() const = 0;
};

/// The machine's clock, for the life of the process.
const Clock& systemClock();

}  // namespace fiar
