#pragma once

#include <windows.h>

#include <string_view>

#include "platform/error.h"

namespace fiar::win32 {

/// A call of the system that failed: its name and the system's own text for the error.
class Error : public fiar::Error {
public:
  /// \param call the name of the function; \param code what GetLastError() gave.
  Error(std::string_view call, DWORD code);
};

/// Throws the Error of a call that has just failed, from the thread's last error.
[[noreturn]] void throwLastError(std::string_view call);

/// Returns the result of a call; throws its Error when the result is zero, false or null.
template <class Result>
Result require(Result result, std::string_view call) {
  if (!result) throwLastError(call);
  return result;
}

/// The system's text for an error's number, without a line end; "error N" where there is none.
Text errorText(DWORD code);

}  // namespace fiar::win32
