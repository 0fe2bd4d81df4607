// Where the program starts: makes the machine's services and the window, and runs until the window is closed.
// A failure, a call of std::terminate and a fault of the processor show a message box and end it with exit
// code 1.

#include <windows.h>

#include <array>
#include <cwchar>
#include <exception>
#include <optional>

#include "app/mainFrm.h"
#include "app/startUpMod.h"
#include "platform/error.h"
#include "win32/services/services.h"
#include "win32/wide_text.h"
#include "win32/window/com.h"
#include "win32/window/form_window.h"
#include "win32/window/standard_controls.h"

namespace fiar::win32 {
namespace {

constexpr const wchar_t* kTitle = L"Five in a Row";

/// Tells the user in a message box why the program ends, and returns when it has been read.
void showFatalError(std::wstring_view reason) noexcept {
  try {
    const std::wstring text = std::wstring(L"Five in a Row has to close.\n\n").append(reason);
    MessageBoxW(nullptr, text.c_str(), kTitle, MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
  } catch (...) {
    MessageBoxW(nullptr, L"Five in a Row has to close.", kTitle, MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
  }
}

// Ends without the clean-up that a broken program could stumble over.
[[noreturn]] void endNow() {
  TerminateProcess(GetCurrentProcess(), EXIT_FAILURE);
  std::abort();
}

/// Shows what the exception that is being handled says.
void showException() noexcept {
  try {
    std::rethrow_exception(std::current_exception());
  } catch (const fiar::Error& error) {
    showFatalError(toWide(error.message()));
  } catch (const std::exception& error) {
    const std::string_view what(error.what());
    showFatalError(std::wstring(what.begin(), what.end()));
  } catch (...) {
    showFatalError(L"an unknown error");
  }
}

[[noreturn]] void onTerminate() {
  std::current_exception() ? showException() : showFatalError(L"an internal error");
  endNow();
}

LONG WINAPI onFault(EXCEPTION_POINTERS* fault) {
  std::array<wchar_t, 64> reason{};
  std::swprintf(reason.data(), reason.size(), L"a fault of the program (number %08lX)",
                fault->ExceptionRecord->ExceptionCode);
  showFatalError(reason.data());
  endNow();
}

int run(int showCommand) {
  const ComApartment apartment;
  useVisualStyles();

  Win32Services services;

  Toolkit toolkit(services.platform);
  mainFrm mainWindow(toolkit);
  std::optional<FormWindow> window;
  startUpMod::Main(toolkit, [&] {
    window.emplace(mainWindow.form, services.resources);
    window->show(showCommand);
  });
  const int exitCode = services.events.runUntilQuit();
  window->rethrowFailure();
  return exitCode;
}

}  // namespace
}  // namespace fiar::win32

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int nShowCmd) {
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  std::set_terminate(fiar::win32::onTerminate);
  SetUnhandledExceptionFilter(fiar::win32::onFault);
  try {
    return fiar::win32::run(nShowCmd);
  } catch (...) {
    fiar::win32::showException();
    return EXIT_FAILURE;
  }
}
