#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace fiar {

/// What a socket control is doing. A client passes ResolvingHost, HostResolved and Connecting on its way to
/// Connected; Closing is a connection that the other side has ended, Error one that failed.
enum class SocketState {
  Closed = 0,
  Open = 1,
  Listening = 2,
  ConnectionPending = 3,
  ResolvingHost = 4,
  HostResolved = 5,
  Connecting = 6,
  Connected = 7,
  Closing = 8,
  Error = 9
};

/// The highest port that there is.
inline constexpr int kHighestPort = 65535;

/// A TCP client. No operation waits: its result is reported through State() and the events, which are
/// raised while pending events are delivered (OnError also by an operation that fails at once). A handler may
/// call any operation.
class SocketControl {
public:
  SocketControl() = default;
  SocketControl(const SocketControl&) = delete;
  SocketControl& operator=(const SocketControl&) = delete;
  virtual ~SocketControl() = default;

  Text RemoteHost;     ///< name or address that Connect() goes to; an empty one is not found
  int RemotePort = 0;  ///< port that Connect() goes to; outside 1 to kHighestPort the connection fails

  std::function<void()> OnConnect;      ///< State() has become Connected
  std::function<void()> OnDataArrival;  ///< new data waits for GetData()
  /// State() has become Error; the description is the system's.
  std::function<void(TextView description)> OnError;

  /// Starts to connect to RemoteHost and RemotePort, address by address where the name has several; closes
  /// what was there before.
  virtual void Connect() = 0;
  virtual SocketState State() const = 0;
  /// Sends bytes in the order of the calls, the rest of them later where the network does not take all at
  /// once; they are lost where State() is not Connected.
  virtual void SendData(std::string_view bytes) = 0;
  /// Takes all bytes that have arrived; none: empty.
  virtual std::string GetData() = 0;
  /// Ends the connection, or the attempt at one, without an event. What has not gone out yet is lost.
  virtual void Close() = 0;
};

}  // namespace fiar
