#include "win32/error.h"

#include <array>

#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

// The standard library's category for the system is the C library's here, so Windows gets one of its own.
class WindowsCategory final : public std::error_category {
public:
  const char* name() const noexcept override { return "windows"; }
  std::string message(int code) const override { return errorText(static_cast<DWORD>(code)); }
};

const std::error_category& windowsCategory() {
  static const WindowsCategory category;
  return category;
}

}  // namespace

Error::Error(const char* call, DWORD code)
    : std::system_error(static_cast<int>(code), windowsCategory(), call) {}

void throwLastError(const char* call) {
  throw Error(call, GetLastError());
}

std::string errorText(DWORD code) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      code, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::wstring_view text(buffer.data(), length);
  text = text.substr(0, text.find_last_not_of(L"\r\n ") + 1);
  return text.empty() ? "error " + std::to_string(code) : toUtf8(fromWide(text));
}

}  // namespace fiar::win32
