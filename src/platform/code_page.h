#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace fiar {

/// The one-byte character set through which text becomes bytes and bytes become text, one byte a character.
class CodePage {
public:
  /// \param characters the character of each byte value; where one stands twice, the lower byte is its code.
  explicit CodePage(const std::array<char16_t, 256>& characters);

  /// The character of a byte.
  char16_t character(std::uint8_t byte) const { return characters_[byte]; }
  /// The byte of a character; '?' for one that the code page lacks.
  std::uint8_t byte(char16_t character) const { return bytes_[character]; }

  /// One character a byte, NUL included.
  Text decode(std::string_view bytes) const;
  /// One byte a character, NUL included.
  std::string encode(TextView text) const;

private:
  std::array<char16_t, 256> characters_;
  std::array<std::uint8_t, 65536> bytes_{};
};

/// The characters of Windows-1252. The five bytes that it leaves undefined stand for the control codes of the
/// same number, as Windows has it.
std::array<char16_t, 256> windows1252Characters();

}  // namespace fiar
