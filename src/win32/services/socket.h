#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

#include <cstddef>
#include <memory>

#include "platform/socket_control.h"
#include "win32/handle.h"

namespace fiar::win32 {

struct SocketTraits {
  using Handle = SOCKET;
  static Handle none() { return INVALID_SOCKET; }
  static void close(Handle handle) { closesocket(handle); }
};
using SocketHandle = UniqueHandle<SocketTraits>;

/// A socket control over a non-blocking Windows socket. Its events are messages to a hidden window.
class Win32Socket final : public SocketControl {
public:
  /// Throws an Error where the system has no network library.
  Win32Socket();
  Win32Socket(const Win32Socket&) = delete;
  Win32Socket& operator=(const Win32Socket&) = delete;
  Win32Socket(Win32Socket&&) = delete;
  Win32Socket& operator=(Win32Socket&&) = delete;
  ~Win32Socket() override;

  void Connect() override;
  SocketState State() const override { return state_; }
  void SendData(std::string_view bytes) override;
  std::string GetData() override;
  void Close() override;

private:
  class Lookup;

  static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
  void lookedUp(int error);
  void connectToNext(int lastError);
  bool startConnecting(const ADDRINFOEXW& address);
  void socketEvent(int event, int error);
  void finishConnecting(int error);
  bool receive();
  void sendQueued();
  void dropConnection();
  void fail(int error);

  SocketState state_ = SocketState::Closed;
  // Made for each connection, so that no message of an earlier one is taken for one of this.
  WindowHandle window_;
  std::shared_ptr<Lookup> lookup_;            ///< of the connection being made; null: none
  const ADDRINFOEXW* nextAddress_ = nullptr;  ///< in lookup_
  SocketHandle socket_;
  std::string queued_;  ///< bytes to send, from sent_ on
  std::size_t sent_ = 0;
  std::string arrived_;
};

}  // namespace fiar::win32
