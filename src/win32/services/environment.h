#pragma once

#include "platform/platform.h"
#include "win32/handle.h"

namespace fiar::win32 {

/// This process's environment. Marks the process as a running instance for as long as it exists.
class Win32Environment final : public Environment {
public:
  /// \param instanceName the name by which instances of the program in one user's session find each other.
  explicit Win32Environment(TextView instanceName);

  Text variable(TextView name) const override;
  Text programFolder() const override;
  bool otherInstanceRunning() const override { return otherInstanceRunning_; }

private:
  KernelHandle instanceMark_;
  bool otherInstanceRunning_ = false;
};

}  // namespace fiar::win32
