// The GUI tests' hand inside Windows: starts programs, tells what their windows are, and does what only a
// Windows program can. Reads one command a line from the standard input, with tabs between its words; answers
// each with any number of lines and a last one, "." for done or "! " with what failed. Ends with the input,
// and all that it has started ends with it.
//
//   start FILE [unset NAME]...         starts a program; answers its process number
//   exit PROCESS                       answers the exit code of a process, nothing while it runs
//   stop PROCESS                       ends a process at once
//   windows PROCESS                    answers a line for each window; see printWindow
//   post WINDOW MESSAGE WPARAM LPARAM  posts a message
//   size WINDOW WIDTH HEIGHT           asks a window to be so large, frame included
//   dpi PROCESS WINDOW DPI LEFT TOP RIGHT BOTTOM
//                                      tells a window that it is now on a monitor of so many dots per inch
//   resource PROGRAM TYPE NAME FILE    puts a file into the place of a resource; a NAME that is a number is
//                                      written #102

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "win32/error.h"
#include "win32/handle.h"

namespace {

using fiar::win32::KernelHandle;
using fiar::win32::require;
using Words = std::vector<std::wstring>;

// A window that does not answer for so long hangs.
constexpr UINT kAnswerMilliseconds = 20'000;

std::wstring toWide(const std::string& utf8) {
  std::wstring wide(utf8.size(), L'\0');
  wide.resize(static_cast<std::size_t>(MultiByteToWideChar(
      CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), static_cast<int>(wide.size()))));
  return wide;
}

std::string toUtf8(const std::wstring& wide) {
  std::string utf8(wide.size() * 3, '\0');
  utf8.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(),
                                                           static_cast<int>(wide.size()), utf8.data(),
                                                           static_cast<int>(utf8.size()), nullptr, nullptr)));
  return utf8;
}

HWND toWindow(const std::wstring& number) {
  return reinterpret_cast<HWND>(static_cast<std::intptr_t>(std::stoll(number)));
}

long long numberOf(HWND window) {
  return reinterpret_cast<std::intptr_t>(window);
}

LRESULT ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR answer = 0;
  require(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerMilliseconds, &answer),
          "SendMessageTimeout");
  return static_cast<LRESULT>(answer);
}

std::wstring textOf(HWND window) {
  std::wstring text(1024, L'\0');
  text.resize(
      static_cast<std::size_t>(ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  for (wchar_t& character : text) {
    if (character < L' ') character = L' ';
  }
  return text;
}

std::wstring classOf(HWND window) {
  std::wstring name(256, L'\0');
  name.resize(static_cast<std::size_t>(GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
  return name;
}

/// The programs that were started, and their handles as long as the probe lives.
class Processes {
public:
  Processes() : job_(require(CreateJobObjectW(nullptr, nullptr), "CreateJobObject")) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    require(SetInformationJobObject(job_.get(), JobObjectExtendedLimitInformation, &limits, sizeof(limits)),
            "SetInformationJobObject");
  }

  DWORD start(const std::wstring& file, const Words& unsetNames) {
    // What is unset here is not inherited.
    std::map<std::wstring, std::wstring> values;
    for (const std::wstring& name : unsetNames) {
      std::wstring value(32'767, L'\0');
      value.resize(GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size())));
      values[name] = value;
      SetEnvironmentVariableW(name.c_str(), nullptr);
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION made{};
    std::wstring commandLine = L'"' + file + L'"';
    const BOOL started = CreateProcessW(file.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                                        CREATE_SUSPENDED, nullptr, nullptr, &startup, &made);
    const DWORD error = GetLastError();
    for (const auto& [name, value] : values) SetEnvironmentVariableW(name.c_str(), value.c_str());
    if (started == FALSE) throw fiar::win32::Error("CreateProcess", error);
    const KernelHandle thread(made.hThread);
    processes_[made.dwProcessId] = KernelHandle(made.hProcess);
    require(AssignProcessToJobObject(job_.get(), made.hProcess), "AssignProcessToJobObject");
    ResumeThread(thread.get());
    return made.dwProcessId;
  }

  HANDLE handle(const std::wstring& number) const {
    return processes_.at(static_cast<DWORD>(std::stoul(number))).get();
  }

private:
  KernelHandle job_;
  std::map<DWORD, KernelHandle> processes_;
};

/// A line for a window: its number, its container's number (0 for a window of its own), "visible",
/// "minimised", "focused" and "checked" as 0 or 1, its whole area and its inside on the screen (left, top,
/// right, bottom each), class, text.
void printWindow(HWND window) try {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof(thread);
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread);
  RECT whole{};
  RECT inside{};
  GetWindowRect(window, &whole);
  GetClientRect(window, &inside);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
  const std::wstring name = classOf(window);
  const bool checked = name == L"Button" && ask(window, BM_GETCHECK) == BST_CHECKED;
  const bool contained = (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0;
  const std::string text = toUtf8(textOf(window));
  std::cout << numberOf(window) << '\t' << (contained ? numberOf(GetParent(window)) : 0) << '\t'
            << (IsWindowVisible(window) != FALSE) << '\t' << (IsIconic(window) != FALSE) << '\t'
            << (thread.hwndFocus == window) << '\t' << checked << '\t' << whole.left << '\t' << whole.top
            << '\t' << whole.right << '\t' << whole.bottom << '\t' << inside.left << '\t' << inside.top
            << '\t' << inside.right << '\t' << inside.bottom << '\t' << toUtf8(name) << '\t' << text << '\n';
} catch (const fiar::win32::Error&) {
  // A window that has just been destroyed is none any more.
  if (IsWindow(window) != FALSE) throw;
}

BOOL CALLBACK collect(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

void printWindows(DWORD process) {
  std::vector<HWND> topWindows;
  EnumWindows(collect, reinterpret_cast<LPARAM>(&topWindows));
  for (HWND top : topWindows) {
    DWORD owner = 0;
    GetWindowThreadProcessId(top, &owner);
    if (owner != process || IsWindowVisible(top) == FALSE) continue;
    printWindow(top);
    std::vector<HWND> contents;
    EnumChildWindows(top, collect, reinterpret_cast<LPARAM>(&contents));
    for (HWND window : contents) printWindow(window);
  }
}

/// WM_DPICHANGED with its rectangle, which has to lie in the memory of the window's process.
void sendDpi(HANDLE process, HWND window, int dpi, const RECT& area) {
  void* const remote =
      require(VirtualAllocEx(process, nullptr, sizeof(area), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE),
              "VirtualAllocEx");
  require(WriteProcessMemory(process, remote, &area, sizeof(area), nullptr), "WriteProcessMemory");
  ask(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(remote));
  VirtualFreeEx(process, remote, 0, MEM_RELEASE);
}

BOOL CALLBACK collectLanguage(HMODULE /*program*/, const wchar_t* /*type*/, const wchar_t* /*name*/,
                              WORD language, LONG_PTR list) {
  reinterpret_cast<std::vector<WORD>*>(list)->push_back(language);
  return TRUE;
}

void changeResource(const std::wstring& program, const wchar_t* type, const std::wstring& nameText,
                    const std::wstring& file) {
  const wchar_t* const name =
      nameText.front() == L'#' ? MAKEINTRESOURCEW(std::stoi(nameText.substr(1))) : nameText.c_str();
  std::vector<WORD> languages;
  const HMODULE loaded =
      require(LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE), "LoadLibraryEx");
  EnumResourceLanguagesW(loaded, type, name, collectLanguage, reinterpret_cast<LONG_PTR>(&languages));
  FreeLibrary(loaded);
  if (languages.empty()) throw std::runtime_error("there is no such resource");
  std::ifstream stream(std::filesystem::path(file), std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  if (bytes.empty()) throw std::runtime_error("there is nothing in the file");
  HANDLE update = require(BeginUpdateResourceW(program.c_str(), FALSE), "BeginUpdateResource");
  for (const WORD language : languages) {
    require(UpdateResourceW(update, type, name, language, bytes.data(), static_cast<DWORD>(bytes.size())),
            "UpdateResource");
  }
  require(EndUpdateResourceW(update, FALSE), "EndUpdateResource");
}

void obey(const Words& words, Processes& processes) {
  const std::wstring& command = words.at(0);
  if (command == L"start") {
    std::cout << processes.start(words.at(1), {words.begin() + 2, words.end()}) << '\n';
  } else if (command == L"exit") {
    DWORD code = 0;
    require(GetExitCodeProcess(processes.handle(words.at(1)), &code), "GetExitCodeProcess");
    if (code != STILL_ACTIVE) std::cout << code << '\n';
  } else if (command == L"stop") {
    TerminateProcess(processes.handle(words.at(1)), 1);
  } else if (command == L"windows") {
    printWindows(static_cast<DWORD>(std::stoul(words.at(1))));
  } else if (command == L"post") {
    require(PostMessageW(toWindow(words.at(1)), static_cast<UINT>(std::stoul(words.at(2))),
                         static_cast<WPARAM>(std::stoll(words.at(3))), std::stoll(words.at(4))),
            "PostMessage");
  } else if (command == L"size") {
    require(SetWindowPos(toWindow(words.at(1)), nullptr, 0, 0, std::stoi(words.at(2)), std::stoi(words.at(3)),
                         SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE),
            "SetWindowPos");
  } else if (command == L"dpi") {
    const auto number = [&](std::size_t index) { return std::stoi(words.at(index)); };
    sendDpi(processes.handle(words.at(1)), toWindow(words.at(2)), number(3),
            {number(4), number(5), number(6), number(7)});
  } else if (command == L"resource") {
    changeResource(words.at(1), words.at(2).c_str(), words.at(3), words.at(4));
  } else {
    throw std::runtime_error("there is no such command");
  }
}

}  // namespace

int main() {
  // The tests reckon in the pixels of the screen.
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  Processes processes;
  for (std::string line; std::getline(std::cin, line);) {
    Words words(1);
    for (const wchar_t character : toWide(line)) {
      if (character == L'\t') {
        words.emplace_back();
      } else if (character != L'\r') {
        words.back() += character;
      }
    }
    try {
      obey(words, processes);
      std::cout << "." << std::endl;
    } catch (const std::exception& failure) {
      std::cout << "! " << failure.what() << std::endl;
    }
  }
}
