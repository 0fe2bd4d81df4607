#include "platform/posix/posix_events.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <thread>

namespace fiar {
namespace {

class PosixEventsTest : public testing::Test {
protected:
  void SetUp() override {
    for (auto& line : lines) EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, line.data()), 0);
  }
  void TearDown() override {
    for (const auto& line : lines) {
      for (const int end : line) close(end);
    }
  }
  static void send(const std::array<int, 2>& line) { EXPECT_EQ(write(line[1], "x", 1), 1); }

  std::array<std::array<int, 2>, 2> lines{};  ///< two lines, each from its second end to its first
  PosixEvents events;
  int calls = 0;
};

TEST_F(PosixEventsTest, EndAWaitAndAreDeliveredWhileReady) {
  using Time = std::chrono::steady_clock;
  events.watch(lines[0][0], POLLIN, [&](short ready) {
    EXPECT_EQ(ready, POLLIN);
    char byte = 0;
    if (++calls == 2) {
      EXPECT_EQ(read(lines[0][0], &byte, 1), 1);
    }
  });
  const auto start = Time::now();
  events.waitAndProcess(0.05);
  EXPECT_GE(Time::now() - start, std::chrono::milliseconds(49));
  EXPECT_EQ(calls, 0);
  std::thread sender([this] { send(lines[0]); });
  events.waitAndProcess(60);
  sender.join();
  EXPECT_EQ(calls, 1);
  EXPECT_LT(Time::now() - start, std::chrono::seconds(30));
  for (int i = 0; i < 2; ++i) events.process();
  EXPECT_EQ(calls, 2);
}

// Whichever is called first ends the other's watch and its own, and delivers events itself.
TEST_F(PosixEventsTest, MayEndAndReplaceTheWatches) {
  const std::string kept(100, 'x');
  for (const auto& line : lines) {
    send(line);
    events.watch(line[0], POLLIN, [this, kept](short) {
      ++calls;
      for (const auto& each : lines) events.unwatch(each[0]);
      events.process();
      EXPECT_EQ(kept.size(), 100U) << "a callback outlives its own call";
    });
  }
  for (int i = 0; i < 2; ++i) events.process();
  EXPECT_EQ(calls, 1);
  // A watch that is replaced before its turn is called in neither form.
  for (const auto& line : lines) {
    events.watch(line[0], POLLIN, [this](short) {
      for (const auto& each : lines) events.watch(each[0], POLLIN, [this](short) { calls += 10; });
    });
  }
  events.process();
  EXPECT_EQ(calls, 1);
  events.process();
  EXPECT_EQ(calls, 21);
}

}  // namespace
}  // namespace fiar
