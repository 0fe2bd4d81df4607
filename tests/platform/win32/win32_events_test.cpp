#include "platform/win32/win32_events.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/win32/error.h"
#include "platform/win32/handle.h"

namespace fiar::win32 {
namespace {

constexpr UINT kNote = WM_APP;

// A window that only takes messages and calls the test for each of its own.
class Win32EventsTest : public testing::Test {
protected:
  Win32EventsTest() {
    window.reset(
        require(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr),
                "CreateWindowExW"));
    SetWindowLongPtrW(window.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
  }

  void post(UINT message = kNote) const { PostMessageW(window.get(), message, 0, 0); }

  WindowHandle window;
  std::function<void()> onMessage;
  int received = 0;

private:
  static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<Win32EventsTest*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (message != kNote) return DefWindowProcW(handle, message, wParam, lParam);
    ++self->received;
    if (self->onMessage) self->onMessage();
    return 0;
  }
};

TEST_F(Win32EventsTest, DeliversWhatIsWaitingUnlessTheFilterTakesIt) {
  int filtered = 0;
  Win32Events events([&](MSG& message) { return message.message == WM_APP + 1 && ++filtered > 0; });
  for (int i = 0; i < 3; ++i) post();
  post(WM_APP + 1);
  events.process();
  EXPECT_EQ(received, 3);
  EXPECT_EQ(filtered, 1);
}

TEST_F(Win32EventsTest, AWaitEndsWithAnEventOrItsTime) {
  using Time = std::chrono::steady_clock;
  Win32Events events;
  auto start = Time::now();
  while (received == 0 && Time::now() - start < std::chrono::milliseconds(50)) events.waitAndProcess(0.05);
  EXPECT_GE(Time::now() - start, std::chrono::milliseconds(45));
  start = Time::now();
  std::thread poster([this] { post(); });
  while (received == 0 && Time::now() - start < std::chrono::seconds(30)) events.waitAndProcess(60);
  poster.join();
  EXPECT_EQ(received, 1);
  EXPECT_LT(Time::now() - start, std::chrono::seconds(30));
}

// A timer that is due again whenever its handler is done must not keep the program here for ever.
TEST_F(Win32EventsTest, DeliveryEndsThoughMessagesKeepComing) {
  Win32Events events;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  onMessage = [&] {
    if (std::chrono::steady_clock::now() < deadline) post();
  };
  post();
  events.process();
  EXPECT_GE(received, 1);
  EXPECT_LT(std::chrono::steady_clock::now(), deadline);
}

TEST_F(Win32EventsTest, LeavesTheRequestToQuitForTheMainLoop) {
  Win32Events events;
  PostQuitMessage(7);
  // What was posted comes before the request, which then stops all delivery.
  post();
  events.process();
  EXPECT_EQ(received, 1);
  post();
  events.process();
  events.waitAndProcess(0.01);
  EXPECT_EQ(received, 1);
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE && message.message != WM_QUIT) {
  }
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
  EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace fiar::win32
