#pragma once

#include "platform/text.h"

namespace fiar {

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

/// This process's environment, for its life. The first call marks the process as a running instance.
const Environment& systemEnvironment();

}  // namespace fiar
