#include <set>

#include "win32/error.h"
#include "win32/services/services.h"

namespace fiar::win32 {
namespace {

// Characters of the private use area for the bytes that stand for no character of their own, such as the
// first bytes of two-byte characters: each byte must survive the way to text and back.
constexpr char16_t kPrivateUse = 0xF700;

// The character of one byte; a private one where the byte alone has none.
char16_t characterOf(std::size_t byte, UINT codePage) {
  const auto privateUse = static_cast<char16_t>(kPrivateUse + byte);
  const char narrow = static_cast<char>(byte);
  if (IsDBCSLeadByteEx(codePage, static_cast<BYTE>(byte)) != FALSE) return privateUse;
  wchar_t wide = 0;
  const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1);
  return length == 1 ? static_cast<char16_t>(wide) : privateUse;
}

CodePage::Characters charactersOf(UINT codePage) {
  CodePage::Characters characters{};
  std::set<char16_t> taken;
  for (std::size_t byte = 0; byte < characters.size(); ++byte) {
    char16_t& character = characters[byte];
    character = characterOf(byte, codePage);
    if (!taken.insert(character).second) character = static_cast<char16_t>(kPrivateUse + byte);
  }
  return characters;
}

// The byte that the system makes of each character; "?" where it knows none, or only two.
CodePage::Bytes nearestBytes(UINT codePage) {
  CodePage::Bytes nearest{};
  std::wstring characters(nearest.size(), L'?');
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const auto character = static_cast<wchar_t>(i);
    const bool surrogate = IS_HIGH_SURROGATE(character) || IS_LOW_SURROGATE(character);
    if (!surrogate) characters[i] = character;
  }
  // The system is asked once for all characters: asking it for each one is slow.
  std::string bytes(2 * characters.size(), '\0');
  require(WideCharToMultiByte(codePage, 0, characters.data(), static_cast<int>(characters.size()),
                              bytes.data(), static_cast<int>(bytes.size()), "?", nullptr),
          "WideCharToMultiByte");
  std::array<bool, 256> startsPair{};
  for (std::size_t byte = 0; byte < startsPair.size(); ++byte) {
    startsPair[byte] = IsDBCSLeadByteEx(codePage, static_cast<BYTE>(byte)) != FALSE;
  }
  auto next = bytes.begin();
  for (std::uint8_t& byte : nearest) {
    byte = static_cast<std::uint8_t>(*next);
    next += startsPair[byte] ? 2 : 1;
    if (startsPair[byte]) byte = '?';
  }
  return nearest;
}

}  // namespace

CodePage ansiCodePage(unsigned number) {
  const UINT codePage = number == CP_UTF8 ? 1252 : number;
  return {charactersOf(codePage), nearestBytes(codePage)};
}

}  // namespace fiar::win32
