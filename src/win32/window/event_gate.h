#pragma once

#include <exception>
#include <functional>

namespace fiar::win32 {

/// The way by which events reach the program's handlers. Nothing gets through any more once the program is to
/// end. Exceptions cannot pass through the system, which calls the window procedures: the first one is kept
/// here, ends the message loop, and is thrown again behind it.
class EventGate {
public:
  /// Runs a handler and then what has to follow every event, unless the program is about to end.
  template <class Handler>
  void raise(const Handler& handler) {
    if (closed_) return;
    handler();
    if (!closed_) afterEvent_();
  }

  /// Sets what follows every event.
  void afterEvent(std::function<void()> action) { afterEvent_ = std::move(action); }

  /// Asks the message loop to end; what runs at the moment runs on.
  void close();
  /// The same because of the exception that is being handled. Only the first one counts.
  void fail() noexcept;
  bool closed() const { return closed_; }

  /// Throws the exception that ended the program, if one did.
  void rethrowFailure() const;

private:
  std::function<void()> afterEvent_ = [] {};
  std::exception_ptr failure_;
  bool closed_ = false;
};

}  // namespace fiar::win32
