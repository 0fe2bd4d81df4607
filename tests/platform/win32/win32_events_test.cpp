#include "platform/win32/win32_events.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/win32/error.h"
#include "platform/win32/handle.h"

namespace fiar::win32 {
namespace {

using Time = std::chrono::steady_clock;

constexpr UINT kNote = WM_APP;
constexpr UINT kFiltered = WM_APP + 1;

// A window that only takes messages and calls the test for each note.
class Win32EventsTest : public testing::Test {
protected:
  Win32EventsTest() {
    SetWindowLongPtrW(window.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
  }

  void post(UINT message = kNote) const { PostMessageW(window.get(), message, 0, 0); }

  WindowHandle window{
      require(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr),
              "CreateWindowExW")};
  int filtered = 0;
  Win32Events events{[this](MSG& message) { return message.message == kFiltered && ++filtered > 0; }};
  std::function<void()> onNote = [] {};
  int received = 0;

private:
  static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<Win32EventsTest*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (message < WM_APP) return DefWindowProcW(handle, message, wParam, lParam);
    ++self->received;
    self->onNote();
    return 0;
  }
};

TEST_F(Win32EventsTest, AWaitEndsWithAnEventOrItsTime) {
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
  const auto deadline = Time::now() + std::chrono::seconds(10);
  onNote = [&] {
    if (Time::now() < deadline) post();
  };
  post();
  events.process();
  EXPECT_GE(received, 1);
  EXPECT_LT(Time::now(), deadline);
}

TEST_F(Win32EventsTest, DeliversWhatIsWaitingAndLeavesTheRequestToQuitForTheMainLoop) {
  PostQuitMessage(7);
  // What was posted comes before the request, which then stops all delivery.
  for (const UINT message : {kNote, kFiltered, kNote}) post(message);
  events.process();
  EXPECT_EQ(received, 2);
  EXPECT_EQ(filtered, 1);
  post();
  events.process();
  events.waitAndProcess(0.01);
  EXPECT_EQ(received, 2);
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE && message.message != WM_QUIT) {
  }
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
  EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace fiar::win32
