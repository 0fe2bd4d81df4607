#pragma once

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/socket_control.h"
#include "support/fake_platform.h"

namespace fiar::test {

/// Takes part in an SMTP dialogue as the test says: lists of pieces, of which each arrives at once.
struct FakeServer {
  /// Instead of a piece: the connection fails, or the server ends it.
  static constexpr const char* kFailure = "<failure>";
  static constexpr const char* kEnd = "<end>";

  /// What is answered to the connection ("") and to each command, by its first word; to others, nothing.
  std::map<std::string, std::vector<std::string>> answers{
      {"", {"220 here\r\n"}},    {"HELO", {"250 hello\r\n"}}, {"AUTH", {"334 VXNlcm5hbWU6\r\n"}},
      {"MAIL", {"250 ok\r\n"}},  {"RCPT", {"250 ok\r\n"}},    {"DATA", {"354 go on\r\n"}},
      {".", {"250 queued\r\n"}}, {"QUIT", {"221 bye\r\n"}}};

  std::vector<std::string> lines;  ///< what the client sent, without line ends
  int connections = 0;
};

/// A socket control that is connected to a FakeServer. What arrives ends a wait at once.
class FakeSocket final : public SocketControl {
public:
  FakeSocket(FakeServer& server, FakeEvents& events) : server_(server), events_(events) {}

  void Connect() override {
    ++server_.connections;
    state_ = SocketState::Connecting;
    answer("");
  }
  SocketState State() const override { return state_; }
  void SendData(std::string_view bytes) override {
    if (state_ != SocketState::Connected) return;
    unfinished_ += bytes;
    for (std::size_t end = unfinished_.find("\r\n"); end != std::string::npos;
         end = unfinished_.find("\r\n")) {
      takeLine(unfinished_.substr(0, end));
      unfinished_.erase(0, end + 2);
    }
  }
  std::string GetData() override { return std::exchange(arrived_, {}); }
  void Close() override { state_ = SocketState::Closed; }

  /// Raises the event that is due, if any.
  void deliver() {
    if (pieces_.empty()) return;
    const std::string piece = std::move(pieces_.front());
    pieces_.pop_front();
    if (pieces_.empty()) events_.longestWait = 86400;
    if (piece == FakeServer::kFailure) {
      state_ = SocketState::Error;
      return OnError(u"connection refused");
    }
    if (state_ == SocketState::Connecting) {
      state_ = SocketState::Connected;
      OnConnect();
    }
    if (piece == FakeServer::kEnd) {
      state_ = SocketState::Closing;
      return;
    }
    arrived_ = piece;
    OnDataArrival();
  }

private:
  void takeLine(const std::string& line) {
    server_.lines.push_back(line);
    inMessage_ = inMessage_ && line != ".";
    if (!inMessage_) answer(line.substr(0, line.find_first_of(" :")));
    if (line == "DATA") inMessage_ = true;
  }
  void answer(const std::string& word) {
    const bool ended = !pieces_.empty() && pieces_.back() == FakeServer::kEnd;
    if (ended) return;
    const std::vector<std::string>& pieces = server_.answers[word];
    pieces_.insert(pieces_.end(), pieces.begin(), pieces.end());
    if (!pieces_.empty()) events_.longestWait = 0;
  }

  FakeServer& server_;
  FakeEvents& events_;
  SocketState state_ = SocketState::Closed;
  std::string unfinished_;
  std::string arrived_;
  std::deque<std::string> pieces_;
  bool inMessage_ = false;
};

}  // namespace fiar::test
