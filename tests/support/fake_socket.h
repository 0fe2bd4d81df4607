#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "support/fake_platform.h"

namespace fiar::test {

/// A socket control and the mail server behind it, which answers in pieces with a "|" between them. Each
/// piece ends a wait.
class FakeSocket final : public SocketControl {
public:
  static constexpr char kFailure = '\1';  ///< instead of a piece: the connection fails

  explicit FakeSocket(FakeEvents& events) : events_(events) {}

  /// What is answered to the connection and to each command, by its first word; to others, nothing.
  std::map<std::string, std::string> answers{{"connection", "220 here\r\n"},   {"HELO", "250 hello\r\n"},
                                             {"AUTH", "334 VXNlcm5hbWU6\r\n"}, {"MAIL", "250 ok\r\n"},
                                             {"RCPT", "250 ok\r\n"},           {"DATA", "354 go on\r\n"},
                                             {".", "250 queued\r\n"},          {"QUIT", "221 bye\r\n"}};
  double delay = 0;  ///< the seconds until a piece arrives
  std::string said;  ///< what the client sent, lost or not

  void Connect() override {
    state_ = SocketState::Connecting;
    answer("connection");
  }
  SocketState State() const override { return state_; }
  void SendData(std::string_view bytes) override {
    said += bytes;
    if (state_ == SocketState::Connected) answer(std::string(bytes.substr(0, bytes.find_first_of(" :\r"))));
  }
  std::string GetData() override { return std::exchange(arrived_, {}); }
  void Close() override {
    state_ = SocketState::Closed;
    coming_.clear();
  }

  /// Raises the events of what the server does next, if anything.
  void deliver() {
    if (coming_.empty()) return;
    const std::string piece = coming_.substr(0, coming_.find('|'));
    coming_.erase(0, piece.size() + 1);
    if (piece[0] == kFailure) {
      coming_.clear();
      state_ = SocketState::Error;
      OnError(u"connection refused");
    } else {
      if (std::exchange(state_, SocketState::Connected) == SocketState::Connecting) OnConnect();
      arrived_ = piece;
      OnDataArrival();
    }
    if (coming_.empty()) events_.longestWait = 86400;
  }

private:
  void answer(const std::string& command) {
    if (answers[command].empty()) return;
    coming_ += answers[command] + "|";
    events_.longestWait = delay;
  }

  FakeEvents& events_;
  SocketState state_ = SocketState::Closed;
  std::string arrived_;
  std::string coming_;
};

/// Gives a machine sockets of this kind, which have their events when it has its own.
struct FakeNetwork {
  explicit FakeNetwork(FakePlatform& machine) {
    machine.platform.newSocket = [this, &machine] {
      auto made = std::make_unique<FakeSocket>(machine.events);
      socket = made.get();
      return made;
    };
    machine.events.onEvents = [this] { socket->deliver(); };
  }

  FakeSocket* socket = nullptr;  ///< the one that was made last
};

}  // namespace fiar::test
