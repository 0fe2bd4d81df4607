#pragma once

#include <windows.h>

#include <optional>

#include "platform/platform.h"

namespace fiar::win32 {

/// The thread's messages as pending events.
class Win32Events final : public PendingEvents {
public:
  void process() override;
  void waitAndProcess(double seconds) override;

  /// Delivers events until the program is asked to end (WM_QUIT) and returns the exit code of the request.
  /// One that arrives while a handler waits counts too; the handler still gets the events that it waits for.
  int runUntilQuit();

private:
  void receive(const MSG& message);

  std::optional<int> exitCode_;  ///< once the program has been asked to end
};

}  // namespace fiar::win32
