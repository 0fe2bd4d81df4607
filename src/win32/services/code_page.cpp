#include <set>

#include "win32/services/services.h"

namespace fiar::win32 {
namespace {

// Characters of the private use area for the bytes that stand for no character of their own, such as the
// first bytes of two-byte characters: each byte must survive the way to text and back.
constexpr char16_t kPrivateUse = 0xF700;

// The character of one byte of a code page; a private one where the byte alone has none.
char16_t characterOf(std::size_t byte, UINT codePage) {
  const auto privateUse = static_cast<char16_t>(kPrivateUse + byte);
  const char narrow = static_cast<char>(byte);
  if (IsDBCSLeadByteEx(codePage, static_cast<BYTE>(byte)) != FALSE) return privateUse;
  wchar_t wide = 0;
  const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &narrow, 1, &wide, 1);
  return length == 1 ? static_cast<char16_t>(wide) : privateUse;
}

std::array<char16_t, 256> charactersOf(UINT codePage) {
  std::array<char16_t, 256> characters{};
  std::set<char16_t> taken;
  for (std::size_t byte = 0; byte < characters.size(); ++byte) {
    char16_t& character = characters[byte];
    character = characterOf(byte, codePage);
    if (!taken.insert(character).second) character = static_cast<char16_t>(kPrivateUse + byte);
  }
  return characters;
}

}  // namespace

CodePage ansiCodePage(unsigned number) {
  return CodePage(number == CP_UTF8 ? windows1252Characters() : charactersOf(number));
}

}  // namespace fiar::win32
