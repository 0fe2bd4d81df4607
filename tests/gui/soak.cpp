// Uses the real game at random, as a person would with mouse, keyboard and window frame, and checks that it
// goes on answering and that nothing grows.
//
//   soak.exe GAME [INPUTS [SEED]]     500 inputs and seed 1 by default
//
// Prints what the process has after every thousand inputs (or tenth of them, if fewer), each time in the same
// state.

#include <windows.h>
#include <winternl.h>

#include <psapi.h>

#include <array>
#include <cstdint>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "win32/error.h"
#include "win32/handle.h"

namespace {

using fiar::win32::KernelHandle;
using fiar::win32::require;

constexpr UINT kAnswerMilliseconds = 20'000;
constexpr int kStartMilliseconds = 60'000;
// One picture that has not been painted yet, a list that was never opened before.
constexpr int kMostMoreObjects = 8;
constexpr double kMostMoreMegabytes = 1.5;

/// What a process has at a time.
struct Use {
  double megabytes = 0;  ///< of its own memory
  int drawingObjects = 0;
  int windows = 0;
};

BOOL CALLBACK countWindow(HWND /*window*/, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

class Game {
public:
  explicit Game(const std::string& program) {
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    std::string command = "\"" + program + "\"";
    require(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                           &started),
            "CreateProcess");
    process_ = KernelHandle(started.hProcess);
    number_ = started.dwProcessId;
    CloseHandle(started.hThread);
    for (int waited = 0; window_ == nullptr; waited += 10) {
      if (waited > kStartMilliseconds) throw std::runtime_error("the game's window does not appear");
      Sleep(10);
      EnumWindows(takeWindow, reinterpret_cast<LPARAM>(this));
    }
    GetWindowRect(window_, &firstPlace_);
  }
  Game(const Game&) = delete;
  Game& operator=(const Game&) = delete;
  Game(Game&&) = delete;
  Game& operator=(Game&&) = delete;
  ~Game() { TerminateProcess(process_.get(), 1); }

  HWND window() const { return window_; }
  const RECT& firstPlace() const { return firstPlace_; }

  /// Waits until all that was sent to the window has been dealt with. Throws where it has ended or hangs.
  void awaitAnswer() const {
    if (WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0) {
      DWORD code = 0;
      GetExitCodeProcess(process_.get(), &code);
      throw std::runtime_error("the game has ended with exit code " + std::to_string(code));
    }
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, kAnswerMilliseconds, &result) == 0) {
      throw std::runtime_error("the game does not answer");
    }
  }

  Use use() const {
    PROCESS_MEMORY_COUNTERS memory{};
    require(GetProcessMemoryInfo(process_.get(), &memory, sizeof(memory)), "GetProcessMemoryInfo");
    Use use{.megabytes = static_cast<double>(memory.PagefileUsage) / (1 << 20),
            .drawingObjects = drawingObjects()};
    EnumChildWindows(window_, countWindow, reinterpret_cast<LPARAM>(&use.windows));
    return use;
  }

private:
  static BOOL CALLBACK takeWindow(HWND window, LPARAM parameter) {
    auto& game = *reinterpret_cast<Game*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == game.number_ && IsWindowVisible(window) != FALSE) game.window_ = window;
    return TRUE;
  }

  template <class Type>
  void read(const void* from, Type* to, std::size_t count = 1) const {
    require(ReadProcessMemory(process_.get(), from, to, count * sizeof(Type), nullptr), "ReadProcessMemory");
  }

  /// The entries in use of the table of drawing objects that every process sees: GetGuiResources() does not
  /// know them under Wine.
  int drawingObjects() const {
    struct Entry {
      std::uint64_t object;
      std::uint16_t process;
      std::uint16_t lock;
      std::uint16_t generation;
      std::uint8_t kind;
      std::uint8_t flags;
      std::uint64_t data;
    };
    constexpr std::size_t kEntries = 16384;
    constexpr std::size_t kTableInProcessBlock = 0xF8;
    PROCESS_BASIC_INFORMATION basics{};
    if (NtQueryInformationProcess(process_.get(), ProcessBasicInformation, &basics, sizeof(basics), nullptr) <
        0) {
      throw std::runtime_error("NtQueryInformationProcess failed");
    }
    std::uintptr_t table = 0;
    read(reinterpret_cast<const char*>(basics.PebBaseAddress) + kTableInProcessBlock, &table);
    std::vector<Entry> entries(kEntries);
    read(reinterpret_cast<const void*>(table), entries.data(), entries.size());
    int count = 0;
    for (const Entry& entry : entries) {
      if (entry.kind != 0) ++count;
    }
    return count;
  }

  KernelHandle process_;
  DWORD number_ = 0;
  HWND window_ = nullptr;
  RECT firstPlace_{};
};

/// Real input, as the system gets it from mouse and keyboard.
class Person {
public:
  Person(const Game& game, unsigned seed) : game_(game), random_(seed) {}

  void act() {
    const int kind = below(100);
    if (kind < 25) {
      movePointer(0);
    } else if (kind < 80) {
      click();
    } else if (kind < 87) {
      dragOff();
    } else if (kind < 95) {
      type();
    } else if (kind < 98) {
      resize();
    } else {
      changeState();
    }
    game_.awaitAnswer();
  }

  /// Brings the window back to where and how it was first.
  void tidyUp() const {
    tap(VK_ESCAPE);
    game_.awaitAnswer();
    ShowWindow(game_.window(), SW_RESTORE);
    const RECT& place = game_.firstPlace();
    SetWindowPos(game_.window(), nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER);
    SetForegroundWindow(game_.window());
    // Several ticks, so that what follows an event has been done.
    for (int i = 0; i < 10; ++i) {
      Sleep(20);
      game_.awaitAnswer();
    }
  }

private:
  static void send(const INPUT& input) {
    INPUT copy = input;
    require(SendInput(1, &copy, sizeof(copy)) == 1, "SendInput");
  }
  static void press(int key, bool down) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(key);
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    send(input);
  }
  static void tap(int key) {
    press(key, true);
    press(key, false);
  }
  static void button(DWORD flag) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flag;
    send(input);
  }

  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  /// Somewhere in the window or up to so many pixels beside it.
  void movePointer(int beside) {
    RECT place{};
    GetWindowRect(game_.window(), &place);
    const int width = std::max(1, static_cast<int>(place.right - place.left));
    const int height = std::max(1, static_cast<int>(place.bottom - place.top));
    SetCursorPos(place.left - beside + below(width + 2 * beside),
                 place.top - beside + below(height + 2 * beside));
  }

  void click() {
    struct Button {
      DWORD down;
      DWORD up;
    };
    constexpr std::array<Button, 3> kButtons{{{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP},
                                              {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP},
                                              {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP}}};
    const Button& which = kButtons[below(10) < 8 ? 0 : 1U + static_cast<unsigned>(below(2))];
    const int modifier =
        below(10) < 9 ? 0 : std::array{VK_SHIFT, VK_CONTROL}[static_cast<unsigned>(below(2))];
    movePointer(0);
    if (modifier != 0) press(modifier, true);
    button(which.down);
    button(which.up);
    if (modifier != 0) press(modifier, false);
  }

  void dragOff() {
    movePointer(0);
    button(MOUSEEVENTF_LEFTDOWN);
    movePointer(200);
    if (below(4) == 0) resize();
    button(MOUSEEVENTF_LEFTUP);
  }

  void type() {
    constexpr std::array<int, 14> kKeys{VK_LEFT,   VK_RIGHT, VK_UP,  VK_DOWN, VK_SPACE, VK_RETURN, VK_TAB,
                                        VK_ESCAPE, VK_HOME,  VK_END, VK_F4,   VK_NEXT,  '1',       '3'};
    const bool backwards = below(8) == 0;
    if (backwards) press(VK_SHIFT, true);
    tap(kKeys[static_cast<std::size_t>(below(static_cast<int>(kKeys.size())))]);
    if (backwards) press(VK_SHIFT, false);
  }

  void resize() {
    SetWindowPos(game_.window(), nullptr, below(300), below(200), 200 + below(1200), 200 + below(900),
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }

  void changeState() {
    ShowWindow(game_.window(),
               std::array{SW_MINIMIZE, SW_MAXIMIZE, SW_RESTORE}[static_cast<unsigned>(below(3))]);
    game_.awaitAnswer();
    ShowWindow(game_.window(), SW_RESTORE);
    SetForegroundWindow(game_.window());
  }

  const Game& game_;
  std::mt19937 random_;
};

int soak(const std::string& program, int inputs, unsigned seed) {
  std::cout << inputs << " inputs, seed " << seed << std::endl;
  const Game game(program);
  Person person(game, seed);
  const int stretch = std::min(1000, std::max(1, inputs / 10));
  Use first;
  Use last;
  for (int done = 1; done <= inputs; ++done) {
    person.act();
    if (done % stretch != 0) continue;
    person.tidyUp();
    last = game.use();
    if (done == stretch) first = last;
    std::cout << "after " << done << ": " << last.megabytes << " MB, " << last.drawingObjects
              << " drawing objects, " << last.windows << " windows" << std::endl;
  }
  const bool level = last.drawingObjects <= first.drawingObjects + kMostMoreObjects &&
                     last.megabytes <= first.megabytes + kMostMoreMegabytes &&
                     last.windows <= first.windows + 1;
  if (!level) std::cout << "something has grown" << std::endl;
  return level ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  try {
    return soak(arguments.at(0), arguments.size() > 1 ? std::stoi(arguments[1]) : 500,
                arguments.size() > 2 ? static_cast<unsigned>(std::stoul(arguments[2])) : 1);
  } catch (const std::exception& failure) {
    std::cout << "soak: " << failure.what() << std::endl;
    return 1;
  }
}
