#pragma once

#include <netdb.h>

#include <cstddef>
#include <memory>

#include "platform/posix/posix_events.h"
#include "platform/socket_control.h"

namespace fiar {

/// A socket control over a non-blocking POSIX socket. Names are looked up on a thread of their own.
class PosixSocket final : public SocketControl {
public:
  /// \param events delivers this control's events; outlives it.
  explicit PosixSocket(PosixEvents& events) : events_(events) {}
  PosixSocket(const PosixSocket&) = delete;
  PosixSocket& operator=(const PosixSocket&) = delete;
  PosixSocket(PosixSocket&&) = delete;
  PosixSocket& operator=(PosixSocket&&) = delete;
  ~PosixSocket() override;

  void Connect() override;
  SocketState State() const override { return state_; }
  void SendData(std::string_view bytes) override;
  std::string GetData() override;
  void Close() override;

private:
  class Lookup;

  void lookedUp();
  void connectToNext(int lastError);
  bool startConnecting(const addrinfo& address);
  void finishConnecting();
  void ready(short events);
  void receive();
  void sendQueued();
  void watchConnection();
  void dropConnection();
  void fail(std::string_view description);

  PosixEvents& events_;
  SocketState state_ = SocketState::Closed;
  std::shared_ptr<Lookup> lookup_;         ///< of the connection being made; null: none
  const addrinfo* nextAddress_ = nullptr;  ///< in lookup_
  int descriptor_ = -1;                    ///< -1: none
  std::string queued_;                     ///< bytes to send, from sent_ on
  std::size_t sent_ = 0;
  std::string arrived_;
};

/// Makes PosixSockets.
class PosixSockets final {
public:
  /// \param events delivers the sockets' events; outlives them.
  explicit PosixSockets(PosixEvents& events) : events_(events) {}

  std::unique_ptr<SocketControl> newSocket() { return std::make_unique<PosixSocket>(events_); }

private:
  PosixEvents& events_;
};

}  // namespace fiar
