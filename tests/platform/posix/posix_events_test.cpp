#include "platform/posix/posix_events.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <thread>

namespace fiar {
namespace {

class Pipe {
public:
  Pipe() { EXPECT_EQ(pipe(ends_.data()), 0); }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  Pipe(Pipe&&) = delete;
  Pipe& operator=(Pipe&&) = delete;
  ~Pipe() {
    close(ends_[0]);
    closeWriter();
  }

  int reader() const { return ends_[0]; }
  void write() const { EXPECT_EQ(::write(ends_[1], "x", 1), 1); }
  void read() const {
    char byte = 0;
    EXPECT_EQ(::read(ends_[0], &byte, 1), 1);
  }
  void closeWriter() {
    if (ends_[1] >= 0) close(ends_[1]);
    ends_[1] = -1;
  }

private:
  std::array<int, 2> ends_{-1, -1};
};

TEST(PosixEvents, AreDeliveredOnceForEachDeliveryWhileReady) {
  Pipe pipe;
  PosixEvents events;
  int calls = 0;
  events.watch(pipe.reader(), POLLIN, [&](short ready) {
    EXPECT_EQ(ready, POLLIN);
    if (++calls == 2) pipe.read();
  });
  events.process();
  EXPECT_EQ(calls, 0);
  pipe.write();
  for (int i = 0; i < 3; ++i) events.process();
  EXPECT_EQ(calls, 2);
  events.watch(pipe.reader(), 0, [&](short ready) { calls += ready & POLLHUP ? 10 : 100; });
  pipe.write();
  events.process();
  EXPECT_EQ(calls, 2);
  pipe.closeWriter();
  events.process();
  EXPECT_EQ(calls, 12);
}

TEST(PosixEvents, EndAWaitAndNothingElseDoesBeforeItsTime) {
  using Time = std::chrono::steady_clock;
  Pipe pipe;
  PosixEvents events;
  bool delivered = false;
  events.watch(pipe.reader(), POLLIN, [&](short) { delivered = true; });
  const auto start = Time::now();
  events.waitAndProcess(0.05);
  EXPECT_GE(Time::now() - start, std::chrono::milliseconds(49));
  EXPECT_FALSE(delivered);
  std::thread writer([&pipe] { pipe.write(); });
  events.waitAndProcess(60);
  writer.join();
  EXPECT_TRUE(delivered);
  EXPECT_LT(Time::now() - start, std::chrono::seconds(30));
}

// Whichever is called first ends the other's watch and its own, and delivers events itself.
TEST(PosixEvents, LetCallbacksChangeTheWatches) {
  Pipe first;
  Pipe second;
  PosixEvents events;
  int calls = 0;
  const std::string longEnoughToLiveOnTheHeap(100, 'x');
  const auto endAll = [&, longEnoughToLiveOnTheHeap](short) {
    ++calls;
    events.unwatch(first.reader());
    events.unwatch(second.reader());
    events.process();
    EXPECT_EQ(longEnoughToLiveOnTheHeap.size(), 100U);
  };
  for (const Pipe* pipe : {&first, &second}) {
    pipe->write();
    events.watch(pipe->reader(), POLLIN, endAll);
  }
  events.process();
  events.process();
  EXPECT_EQ(calls, 1);
  // A watch that is replaced before its turn is not called in its old form, nor the new one too early.
  const auto replaceBoth = [&](short) {
    for (const Pipe* pipe : {&first, &second}) {
      events.watch(pipe->reader(), POLLIN, [&calls](short) { calls += 10; });
    }
  };
  for (const Pipe* pipe : {&first, &second}) events.watch(pipe->reader(), POLLIN, replaceBoth);
  events.process();
  EXPECT_EQ(calls, 1);
  events.process();
  EXPECT_EQ(calls, 21);
}

}  // namespace
}  // namespace fiar
