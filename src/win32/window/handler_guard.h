#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <type_traits>

namespace fiar::win32 {

/// Guards the handlers of a form. Once closed, drops all events. Exceptions cannot pass through the system,
/// which calls the window procedures: the first one is kept, ends the main loop, and is rethrown after the
/// loop.
class HandlerGuard {
public:
  /// \param afterEvent runs after every event.
  explicit HandlerGuard(std::function<void()> afterEvent) : afterEvent_(std::move(afterEvent)) {}

  /// Raises an event: runs its handler, if it has one.
  template <class... Args>
  void raise(const std::function<void(Args...)>& handler, std::type_identity_t<Args>... args) {
    if (closed_) return;
    if (handler) handler(args...);
    if (!closed_) afterEvent_();
  }

  /// Asks the main loop to end. A handler that is running runs on.
  void close() {
    if (!closed_) PostQuitMessage(failure_ ? EXIT_FAILURE : EXIT_SUCCESS);
    closed_ = true;
  }
  /// Closes because of the exception that is being handled. Only the first one counts.
  void fail() noexcept {
    if (!failure_) failure_ = std::current_exception();
    close();
  }
  /// To be called after the loop.
  void rethrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

private:
  std::function<void()> afterEvent_;
  std::exception_ptr failure_;
  bool closed_ = false;
};

}  // namespace fiar::win32
