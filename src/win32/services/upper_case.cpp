#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/text.h"
#include "win32/error.h"

namespace fiar {

void makeUpperByHost(std::span<char16_t> characters) {
  const std::wstring source(characters.begin(), characters.end());
  std::wstring upper(source.size(), L'\0');
  const int length = static_cast<int>(source.size());
  // Without linguistic casing the mapping is one to one.
  win32::require(LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, source.data(), length, upper.data(),
                               length, nullptr, nullptr, 0),
                 "LCMapStringEx");
  std::copy(upper.begin(), upper.end(), characters.begin());
}

}  // namespace fiar
