#pragma once

#include <windows.h>

#include <functional>

#include "platform/pending_events.h"

namespace fiar::win32 {

/// The thread's messages as pending events.
class Win32Events final : public PendingEvents {
public:
  /// Sees each message before it is dispatched and returns true for one that it has dealt with, as dialog
  /// keys are.
  using Filter = std::function<bool(MSG& message)>;

  explicit Win32Events(Filter filter = {}) : filter_(std::move(filter)) {}

  /// The request to end the program (WM_QUIT) is left for the main loop; nothing is delivered after it.
  void process() override;
  void waitAndProcess(double seconds) override;

  /// Delivers events until the program is asked to end; gives the exit code that came with the request.
  int runUntilQuit() const;

private:
  void dispatch(MSG& message) const;

  Filter filter_;
  bool quitting_ = false;
};

}  // namespace fiar::win32
