#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/code_page.h"
#include "platform/regional_format.h"
#include "platform/socket_control.h"
#include "platform/text.h"

// What the program asks of the machine.
namespace fiar {

/// A local date and time of the proleptic Gregorian calendar, to the second. By default the empty date: day
/// zero of the program's date system, midnight.
struct DateTime {
  int year = 1899;
  int month = 12;  ///< 1 to 12
  int day = 30;    ///< 1 to 31
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59
  int second = 0;  ///< 0 to 59

  bool operator==(const DateTime&) const = default;
};

/// The time of day.
class Clock {
public:
  virtual ~Clock() = default;

  /// Seconds since local midnight, 0 <= t < 86400, with the system's resolution.
  virtual double timer() const = 0;
  /// The current local date and time.
  virtual DateTime now() const = 0;
};

/// What the program is told about its process.
class Environment {
public:
  virtual ~Environment() = default;

  /// The environment variable of that name; empty when it is unset or cannot be read.
  virtual Text variable(TextView name) const = 0;
  /// The folder that holds the program, with or without a final "\".
  virtual Text programFolder() const = 0;
  /// Whether another instance of the program was running when this one started.
  virtual bool otherInstanceRunning() const = 0;
};

/// The data embedded in the program, resource type "custom" (types and names ignore letter case).
class Resources {
public:
  virtual ~Resources() = default;

  /// All bytes of the resource with this number; absent when there is none.
  virtual std::optional<std::string> custom(unsigned number) const = 0;
  /// All bytes of the resource with this name; absent when there is none.
  virtual std::optional<std::string> custom(TextView name) const = 0;
};

/// A seedable source of uniform random numbers.
class RandomGenerator {
public:
  virtual ~RandomGenerator() = default;

  /// Starts a new sequence; the same seed gives the same sequence.
  virtual void seed(double value) = 0;
  /// The next number, 0 <= r < 1.
  virtual double next() = 0;
};

/// Plays one sound at a time in the background. Failures (no device, a bad image) are silent.
class SoundPlayer {
public:
  virtual ~SoundPlayer() = default;

  /// Silences what is playing.
  virtual void stop() = 0;
  /// Starts a WAVE file image in the place of what is playing and returns at once. The image stays the
  /// caller's, who may change or free it right away.
  virtual void play(const std::string& waveImage) = 0;
};

/// What happened outside while a handler was running: input, timers, sockets.
class PendingEvents {
public:
  virtual ~PendingEvents() = default;

  /// Delivers every event that is waiting and returns at once.
  virtual void process() = 0;
  /// Sleeps until an event arrives, at most `seconds` (>= 0), then delivers what is waiting.
  virtual void waitAndProcess(double seconds) = 0;
};

/// The optional database connection. The game never uses it.
class Database {
public:
  virtual ~Database() = default;

  /// Opens the connection that the connect text describes; throws std::exception when it cannot.
  virtual void open(TextView connectText) = 0;
};

/// Stands for a database client where none is built in: opening it keeps the connect text and succeeds.
class RecordedDatabase final : public Database {
public:
  Text connectText;  ///< of the last opening; empty before it

  void open(TextView text) override { connectText = text; }
};

/// A query for the connection; empty until it is set.
struct DatabaseQuery {
  Text statement;
};

/// All of it together. Only refers: whoever makes it owns the services and keeps them alive for as long as
/// the program runs.
struct Platform {
  const Clock& clock;
  const CodePage& codePage;
  const RegionalFormat& regional;
  const Environment& environment;
  const Resources& resources;
  RandomGenerator& random;
  SoundPlayer& sound;
  PendingEvents& events;
  Database& database;
  /// Makes a socket control whose events are among the pending ones. Empty where nothing uses the network: a
  /// call of it throws std::bad_function_call.
  std::function<std::unique_ptr<SocketControl>()> newSocket = {};
};

}  // namespace fiar
