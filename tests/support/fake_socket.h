#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/fake_platform.h"

namespace fiar::test {

/// A socket control and the mail server behind it, which answers in pieces. Each piece ends a wait, and takes
/// no time.
class FakeSocket final : public SocketControl {
public:
  // Instead of a piece: nothing arrives, the server ends the connection, or the connection fails.
  static constexpr const char* kNothing = "<nothing>";
  static constexpr const char* kEnd = "<end>";
  static constexpr const char* kFailure = "<failure>";

  explicit FakeSocket(FakeEvents& events) : events_(events) {}

  /// What is answered to the connection ("") and to each command, by its first word; to others, nothing.
  std::map<std::string, std::vector<std::string>> answers{
      {"", {"220 here\r\n"}},    {"HELO", {"250 hello\r\n"}}, {"AUTH", {"334 VXNlcm5hbWU6\r\n"}},
      {"MAIL", {"250 ok\r\n"}},  {"RCPT", {"250 ok\r\n"}},    {"DATA", {"354 go on\r\n"}},
      {".", {"250 queued\r\n"}}, {"QUIT", {"221 bye\r\n"}}};
  std::string late;                ///< arrives whenever a wait has taken all its time
  std::vector<std::string> lines;  ///< what the client sent, lost or not, without line ends

  void Connect() override {
    state_ = SocketState::Connecting;
    answer("");
  }
  SocketState State() const override { return state_; }
  void SendData(std::string_view bytes) override {
    unfinished_ += bytes;
    for (std::size_t end = 0; (end = unfinished_.find("\r\n")) != std::string::npos;) {
      lines.push_back(unfinished_.substr(0, end));
      unfinished_.erase(0, end + 2);
      if (!lines.back().empty()) answer(lines.back().substr(0, lines.back().find_first_of(" :")));
    }
  }
  std::string GetData() override { return std::exchange(arrived_, {}); }
  void Close() override {
    state_ = SocketState::Closed;
    pieces_.clear();
  }

  /// Raises the event that is due, if any.
  void deliver() {
    if (pieces_.empty() && late.empty()) return;
    arrived_ = late;
    if (!pieces_.empty()) {
      arrived_ = std::move(pieces_.front());
      pieces_.pop_front();
    }
    if (pieces_.empty()) events_.longestWait = 86400;
    if (arrived_ == kNothing) return;
    if (arrived_ == kFailure) {
      state_ = SocketState::Error;
      return OnError(u"connection refused");
    }
    if (state_ == SocketState::Connecting) {
      state_ = SocketState::Connected;
      OnConnect();
    }
    if (arrived_ == kEnd) {
      state_ = SocketState::Closing;
    } else {
      OnDataArrival();
    }
  }

private:
  void answer(const std::string& word) {
    const bool ending = !pieces_.empty() && pieces_.back() == kEnd;
    if (ending || (state_ != SocketState::Connected && state_ != SocketState::Connecting)) return;
    for (const std::string& piece : answers[word]) pieces_.push_back(piece);
    if (!pieces_.empty()) events_.longestWait = 0;
  }

  FakeEvents& events_;
  SocketState state_ = SocketState::Closed;
  std::string unfinished_;
  std::string arrived_;
  std::deque<std::string> pieces_;
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
