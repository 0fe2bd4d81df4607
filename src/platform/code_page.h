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
  /// The character of each byte value.
  using Characters = std::array<char16_t, 256>;
  /// The byte of each character.
  using Bytes = std::array<std::uint8_t, 65536>;

  /// \param characters where one stands twice, the lower byte is its code.
  /// \param nearest for a character that is not among these, the byte of the one that takes its place.
  CodePage(const Characters& characters, const Bytes& nearest);

  /// The character of a byte.
  char16_t character(std::uint8_t byte) const { return characters_[byte]; }
  /// The byte of a character, or of what is nearest to it.
  std::uint8_t byte(char16_t character) const { return bytes_[character]; }

  /// One character a byte, NUL included.
  Text decode(std::string_view bytes) const;
  /// One byte a character, NUL included.
  std::string encode(TextView text) const;

private:
  Characters characters_;
  Bytes bytes_;
};

}  // namespace fiar
