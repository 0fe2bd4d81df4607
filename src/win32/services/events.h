#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "platform/platform.h"

namespace fiar::win32 {

/// The thread's messages as pending events.
class Win32Events final : public PendingEvents {
public:
  /// Sees each message before it is dispatched and returns true for one that it has dealt with, as dialog
  /// keys are.
  using Filter = std::function<bool(const MSG& message)>;

  explicit Win32Events(Filter filter = {}) : filter_(std::move(filter)) {}

  void process() override;
  void waitAndProcess(double seconds) override;

  /// Delivers events until the program is asked to end (WM_QUIT) and returns the exit code of the request.
  /// One that arrives while a handler waits counts too; the handler still gets the events that it waits for.
  int runUntilQuit();

private:
  void receive(const MSG& message);

  Filter filter_;
  std::optional<int> exitCode_;  ///< once the program has been asked to end
};

}  // namespace fiar::win32
