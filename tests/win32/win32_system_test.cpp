// What Windows gives: code page, errors, environment, resources, decoded pictures, sound, messages.

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <map>
#include <numeric>
#include <set>
#include <thread>

#include "support/file_resources.h"
#include "win32/error.h"
#include "win32/handle.h"
#include "win32/services/events.h"
#include "win32/services/services.h"
#include "win32/wide_text.h"
#include "win32/window/com.h"
#include "win32/window/pictures.h"

namespace fiar::win32 {
namespace {

TEST(Win32CodePage, IsTheSystemsOwnByteForByte) {
  std::string bytes(256, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  std::wstring wide(256, L'\0');
  const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), 256, wide.data(), 256);
  if (length != 256) GTEST_SKIP() << "characters of more than one byte here";
  EXPECT_EQ(ansiCodePage().decode(bytes), fromWide(wide));
}

TEST(Win32Clock, MovesAndTellsTheSameTimeInSecondsAndAsADate) {
  const Win32Clock clock;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  const double before = clock.timer();
  const DateTime now = clock.now();
  double after = before;
  while (after == before && std::chrono::steady_clock::now() < deadline) after = clock.timer();
  const double seconds = (now.hour * 60 + now.minute) * 60 + now.second;
  EXPECT_NE(after, before);
  const bool overMidnight = after < before;
  EXPECT_TRUE(overMidnight || (seconds >= std::floor(before) && seconds <= after)) << seconds;
  EXPECT_LT(after, 86400);
  EXPECT_GE(now.year, 2024);
}

TEST(Win32RegionalFormat, ReadsItsOwnNumbersAndShowsEveryPartOfADate) {
  const Win32RegionalFormat format;
  for (const double value : {0.0, -2.5, 1001196.0, 1e-300}) {
    EXPECT_EQ(format.number(format.numberText(value)), value);
  }
  std::set<Text> texts;
  for (const DateTime& date :
       {DateTime{2024, 2, 28, 1, 47, 58}, DateTime{2025, 2, 28, 1, 47, 58}, DateTime{2024, 3, 28, 1, 47, 58},
        DateTime{2024, 2, 29, 1, 47, 58}, DateTime{2024, 2, 28, 13, 47, 58}, DateTime{2024, 2, 28, 1, 48, 58},
        DateTime{2024, 2, 28, 1, 47, 59}, kEmptyDate}) {
    texts.insert(format.dateTimeText(date));
  }
  EXPECT_EQ(texts.size(), 8U);
}

TEST(Win32Error, NamesTheCallAndTheSystemsReason) {
  try {
    SetLastError(ERROR_FILE_NOT_FOUND);
    require(HANDLE{}, "OpenSomething");
    FAIL() << "no error was thrown";
  } catch (const Error& error) {
    const Text reason = errorText(ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(error.message(), u"OpenSomething: " + reason);
    EXPECT_EQ(reason.find_first_of(u"\r\n"), Text::npos);
    EXPECT_NE(reason, errorText(ERROR_ACCESS_DENIED));
  }
  EXPECT_EQ(errorText(0x2FFFFFFF), u"error 805306367");
}

TEST(Win32Environment, SeesAnotherInstanceWhileItRuns) {
  // A name of this run's own: other runs of the tests may be under way.
  const Text name = u"FiveInARow.test." + fromWide(std::to_wstring(GetCurrentProcessId()));
  {
    const Win32Environment first(name);
    EXPECT_TRUE(Win32Environment(name).otherInstanceRunning());
    EXPECT_FALSE(first.otherInstanceRunning());
    EXPECT_FALSE(Win32Environment(name + u".other").otherInstanceRunning());
  }
  EXPECT_FALSE(Win32Environment(name).otherInstanceRunning());
}

TEST(Win32Environment, ReadsVariablesOfAnyLength) {
  const Text name = u"FiveInARow.test";
  for (const std::wstring& value :
       {std::wstring(L"\u010D\u4E2D"), std::wstring(30000, L'x'), std::wstring()}) {
    SetEnvironmentVariableW(L"FIVE_\u017D", value.c_str());
    EXPECT_EQ(Win32Environment(name).variable(u"five_\u017E"), fromWide(value));
  }
  EXPECT_TRUE(Win32Environment(name).programFolder().ends_with(u"\\"));
}

TEST(Win32Resources, AreReadWholeFromTheProgramWhereItHasThem) {
  const Win32Resources resources;
  EXPECT_EQ(resources.custom(7), std::string("seven\0bytes", 11));
  for (const TextView name : {u"Named", u"named"}) EXPECT_EQ(resources.custom(name), "by name");
  for (const unsigned number : {0U, 8U, 0xFFFFU, 0x10007U}) {
    EXPECT_FALSE(resources.custom(number).has_value()) << number;
  }
  for (const TextView name : {u"", u"Name", u"Named "}) EXPECT_FALSE(resources.custom(name).has_value());
}

std::string shipped(TextView name) {
  return test::FileResources().custom(name).value();
}

/// Has the files of the test for resources.
class PicturesTest : public testing::Test, protected Resources {
protected:
  std::optional<std::string> custom(unsigned /*number*/) const override { return std::nullopt; }
  std::optional<std::string> custom(TextView name) const override {
    const auto found = files.find(Text(name));
    return found == files.end() ? std::nullopt : std::optional(found->second);
  }

  std::vector<std::uint32_t> shown(int width, int height) const {
    const PixelBuffer buffer({width, height});
    Pictures(*this).show({u"PICTURE"}, buffer);
    const BitmapView view = buffer.pixels();
    return {view.pixels, view.row(height)};
  }

  const ComApartment apartment;
  std::map<Text, std::string> files;
};

TEST_F(PicturesTest, ShowTheSmallCopyWhereItIsLargeEnough) {
  files[u"PICTURE"] = shipped(u"PICTURE2");
  const auto large = shown(119, 157);
  const auto larger = shown(119, 158);
  files[u"PICTURESMALL"] = shipped(u"PICTURE3");
  EXPECT_NE(shown(119, 157), large);
  EXPECT_EQ(shown(119, 158), larger);
  // The picture itself can be missed before it is needed.
  files.erase(u"PICTURE");
  EXPECT_NE(shown(119, 157), large);
  EXPECT_THROW(Pictures(*this).check({u"PICTURE"}), PictureError);
}

TEST_F(PicturesTest, CutOffAnywhereAreShownInPartOrRefused) {
  for (const auto& [name, step] : {std::pair{u"PICTURE2", 100U}, {u"BACKGROUNDSMALL", 500U}}) {
    const std::string whole = shipped(name);
    for (std::size_t length = 0; length < whole.size(); length += step) {
      files[u"PICTURE"] = whole.substr(0, length);
      try {
        shown(40, 30);
        EXPECT_GT(length, 400U) << testing::PrintToString(name);
      } catch (const PictureError&) {
      }
    }
  }
}

// With or without a sound device: each cue is cut off by the next, so twenty of a quarter of a second, which
// the system's slow first one does not count among, take far less than five seconds.
TEST(Win32Sound, ReturnsAtOnceAndNeedsNeitherADeviceNorTheImage) {
  const std::string error = shipped(u"WAVERR");
  const std::string tap = shipped(u"WAVTAP");
  Win32SoundPlayer().play(tap);
  const auto start = std::chrono::steady_clock::now();
  {
    Win32SoundPlayer player;
    player.stop();
    for (int i = 0; i < 20; ++i) {
      for (const std::string& image :
           {error, tap, std::string("RIFF"), error.substr(0, 100), std::string()}) {
        player.play(std::string(image));
      }
    }
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4500));
}

using Time = std::chrono::steady_clock;

constexpr UINT kNote = WM_APP;

// A window that only takes messages and calls the test for each note.
class Win32EventsTest : public testing::Test {
protected:
  Win32EventsTest() {
    SetWindowLongPtrW(window.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
  }

  void post() const { PostMessageW(window.get(), kNote, 0, 0); }

  WindowHandle window{
      require(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr),
              "CreateWindowExW")};
  Win32Events events;
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

}  // namespace
}  // namespace fiar::win32
