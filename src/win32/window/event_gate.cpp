#include "win32/window/event_gate.h"

#include <windows.h>

namespace fiar::win32 {

void EventGate::close() {
  if (closed_) return;
  closed_ = true;
  PostQuitMessage(failure_ ? EXIT_FAILURE : EXIT_SUCCESS);
}

void EventGate::fail() noexcept {
  if (!failure_) failure_ = std::current_exception();
  close();
}

void EventGate::rethrowFailure() const {
  if (failure_) std::rethrow_exception(failure_);
}

}  // namespace fiar::win32
