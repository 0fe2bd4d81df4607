#include "platform/posix/posix_events.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <thread>

namespace fiar {
namespace {

class PosixEventsTest : public testing::Test {
protected:
  void TearDown() override {
    for (const int line : lines) close(line);
  }
  static void send(int line) { EXPECT_EQ(eventfd_write(line, 1), 0); }

  const std::array<int, 2> lines{eventfd(0, 0), eventfd(0, 0)};
  PosixEvents events;
  int calls = 0;
};

TEST_F(PosixEventsTest, EndAWaitAndAreDeliveredWhileReady) {
  using Time = std::chrono::steady_clock;
  events.watch(lines[0], POLLIN, [&](short ready) {
    EXPECT_EQ(ready, POLLIN);
    eventfd_t sent = 0;
    if (++calls == 2) eventfd_read(lines[0], &sent);
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
  for (const int line : lines) {
    send(line);
    events.watch(line, POLLIN, [this, kept = std::string(100, 'x')](short) {
      ++calls;
      for (const int each : lines) events.unwatch(each);
      events.process();
      EXPECT_EQ(kept.size(), 100U) << "a callback outlives its own call";
    });
  }
  for (int i = 0; i < 2; ++i) events.process();
  EXPECT_EQ(calls, 1);
  // A watch that is replaced before its turn is called in neither form.
  for (const int line : lines) {
    events.watch(line, POLLIN, [this](short) {
      ++calls;
      for (const int each : lines) events.watch(each, POLLIN, [this](short) { calls += 10; });
    });
  }
  events.process();
  EXPECT_EQ(calls, 2);
  events.process();
  EXPECT_EQ(calls, 22);
}

}  // namespace
}  // namespace fiar
