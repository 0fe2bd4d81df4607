// Sends a message to servers that answer anything at any time.
//
// Input: what happens at each delivery of events, one after the other: a byte with a number below 200 and as
// many bytes that arrive; 200 to 253 nothing; 254 the server ends the connection; 255 the connection fails.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/fake_platform.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr std::uint8_t kNothing = 200;
constexpr std::uint8_t kEnd = 254;
constexpr std::uint8_t kFailure = 255;
// The time limits of the whole dialogue with two recipients, and the pauses between their looks at the state.
constexpr double kMostSeconds = 160 + 2 * 10 + 5;

class AnySocket final : public SocketControl {
public:
  AnySocket(std::string_view events, double& longestWait) : events_(events), longestWait_(longestWait) {}

  void Connect() override { state_ = SocketState::Connecting; }
  SocketState State() const override { return state_; }
  void SendData(std::string_view /*bytes*/) override {}
  std::string GetData() override { return std::exchange(arrived_, {}); }
  void Close() override { state_ = SocketState::Closed; }

  void deliver() {
    if (events_.empty()) {
      longestWait_ = kMostSeconds;
      return;
    }
    const auto kind = static_cast<std::uint8_t>(events_.front());
    events_.remove_prefix(1);
    if (kind == kFailure) {
      state_ = SocketState::Error;
      OnError(u"the connection failed");
    } else if (kind == kEnd) {
      state_ = SocketState::Closing;
    } else if (kind < kNothing) {
      if (state_ == SocketState::Connecting) {
        state_ = SocketState::Connected;
        OnConnect();
      }
      arrived_ = events_.substr(0, kind);
      events_.remove_prefix(arrived_.size());
      OnDataArrival();
    }
  }

private:
  std::string_view events_;
  double& longestWait_;
  std::string arrived_;
  SocketState state_ = SocketState::Closed;
};

/// Counts the seconds, over midnight too.
double secondsBetween(double begin, double end) {
  return end >= begin ? end - begin : end - begin + 86400;
}

void send(std::string_view serverEvents) {
  test::FakePlatform machine;
  machine.events.longestWait = 0.01;
  AnySocket* socket = nullptr;
  machine.platform.newSocket = [&] {
    auto made = std::make_unique<AnySocket>(serverEvents, machine.events.longestWait);
    socket = made.get();
    return made;
  };
  machine.events.onEvents = [&] { socket->deliver(); };

  Toolkit toolkit(machine.platform);
  clsZantorMail& mail = toolkit.mail();
  mail.setServerName(u"mail.example");
  mail.setUserName(u"somebody");
  mail.setPassword(u"secret");
  mail.setMailTo(u"one@example;two@example");
  const double begin = machine.clock.seconds;
  if (mail.SendMail()) std::abort();
  if (socket->State() != SocketState::Closed) std::abort();
  if (secondsBetween(begin, machine.clock.seconds) >
      kMostSeconds + 0.01 * static_cast<double>(serverEvents.size())) {
    std::abort();
  }
}

}  // namespace
}  // namespace fiar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fiar::send({reinterpret_cast<const char*>(data), size});
  return 0;
}
