#pragma once

#include <windows.h>

#include <string>
#include <system_error>

namespace fiar::win32 {

/// A call of the system that failed: its name, the error's number and the system's own text for it, in UTF-8.
class Error : public std::system_error {
public:
  /// \param call the name of the function; \param code what GetLastError() gave.
  Error(const char* call, DWORD code);
};

/// Throws the Error of a call that has just failed, from the thread's last error.
[[noreturn]] void throwLastError(const char* call);

/// Returns the result of a call; throws its Error when the result is zero, false or null.
template <class Result>
Result require(Result result, const char* call) {
  if (!result) throwLastError(call);
  return result;
}

/// The system's text for an error's number, in UTF-8 and without a line end; "error N" where there is none.
std::string errorText(DWORD code);

}  // namespace fiar::win32
