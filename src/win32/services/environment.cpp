#include "win32/error.h"
#include "win32/services/services.h"
#include "win32/wide_text.h"

namespace fiar::win32 {

Win32Environment::Win32Environment(TextView instanceName) {
  // A mutex that nobody owns: its existence is the only information. "Local" is the session of the user.
  const std::wstring name = L"Local\\" + toWide(instanceName);
  SetLastError(ERROR_SUCCESS);
  instanceMark_.reset(CreateMutexW(nullptr, FALSE, name.c_str()));
  // Access is denied where another instance runs with more rights. No mark at all is no reason not to play.
  const DWORD result = GetLastError();
  otherInstanceRunning_ = result == ERROR_ALREADY_EXISTS || result == ERROR_ACCESS_DENIED;
}

Text Win32Environment::variable(TextView name) const {
  const std::wstring wideName = toWide(name);
  std::wstring value;
  // The value may grow between asking for its length and reading it.
  for (DWORD length = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0); length > value.size();) {
    value.resize(length);
    length = GetEnvironmentVariableW(wideName.c_str(), value.data(), length);
    if (length < value.size()) value.resize(length);
  }
  return fromWide(value);
}

Text Win32Environment::programFolder() const {
  constexpr std::size_t kLongestPath = 32768;
  std::wstring path(kLongestPath, L'\0');
  path.resize(require(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())),
                      "GetModuleFileNameW"));
  return fromWide(path.substr(0, path.find_last_of(L"\\/") + 1));
}

}  // namespace fiar::win32
