#include "main/fatal_error.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <exception>

#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

constexpr const wchar_t* kTitle = L"Five in a Row";

// Ends without the clean-up that a broken program could stumble over.
[[noreturn]] void endNow() {
  TerminateProcess(GetCurrentProcess(), EXIT_FAILURE);
  std::abort();
}

[[noreturn]] void onTerminate() {
  try {
    if (std::current_exception()) std::rethrow_exception(std::current_exception());
    showFatalError("an internal error");
  } catch (const std::exception& error) {
    showFatalError(error.what());
  } catch (...) {
    showFatalError("an unknown error");
  }
  endNow();
}

LONG WINAPI onFault(EXCEPTION_POINTERS* fault) {
  std::array<char, 64> reason{};
  std::snprintf(reason.data(), reason.size(), "a fault of the program (number %08lX)",
                fault->ExceptionRecord->ExceptionCode);
  showFatalError(reason.data());
  endNow();
}

}  // namespace

void showFatalError(const std::string& reason) noexcept {
  try {
    const std::wstring text = L"Five in a Row has to close.\n\n" + toWide(fromUtf8(reason));
    MessageBoxW(nullptr, text.c_str(), kTitle, MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
  } catch (...) {
    MessageBoxW(nullptr, L"Five in a Row has to close.", kTitle, MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
  }
}

void reportFatalErrors() {
  std::set_terminate(onTerminate);
  SetUnhandledExceptionFilter(onFault);
}

}  // namespace fiar::win32
