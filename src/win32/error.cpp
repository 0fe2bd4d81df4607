#include "win32/error.h"

#include <array>

#include "win32/wide_text.h"

namespace fiar::win32 {

Error::Error(std::string_view call, DWORD code)
    : fiar::Error(Text(call.begin(), call.end()) + u": " + errorText(code)) {}

void throwLastError(std::string_view call) {
  throw Error(call, GetLastError());
}

Text errorText(DWORD code) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      code, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::wstring_view text(buffer.data(), length);
  text = text.substr(0, text.find_last_not_of(L"\r\n ") + 1);
  return fromWide(text.empty() ? L"error " + std::to_wstring(code) : text);
}

}  // namespace fiar::win32
