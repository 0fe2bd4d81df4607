#include "platform/code_page.h"

#include <algorithm>

namespace fiar {

CodePage::CodePage(const std::array<char16_t, 256>& characters) : characters_(characters) {
  bytes_.fill('?');
  for (std::size_t byte = characters.size(); byte-- > 0;) {
    bytes_[characters[byte]] = static_cast<std::uint8_t>(byte);
  }
}

Text CodePage::decode(std::string_view bytes) const {
  Text text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(),
                 [this](char byte) { return character(static_cast<std::uint8_t>(byte)); });
  return text;
}

std::string CodePage::encode(TextView text) const {
  std::string bytes(text.size(), '\0');
  std::transform(text.begin(), text.end(), bytes.begin(),
                 [this](char16_t character) { return static_cast<char>(byte(character)); });
  return bytes;
}

std::array<char16_t, 256> windows1252Characters() {
  // The bytes from 0x80 on that differ from Latin-1; the five without a character stand for control codes.
  constexpr std::array<char16_t, 32> kFrom80{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  std::array<char16_t, 256> characters{};
  for (std::size_t byte = 0; byte < characters.size(); ++byte) characters[byte] = static_cast<char16_t>(byte);
  std::copy(kFrom80.begin(), kFrom80.end(), characters.begin() + 0x80);
  return characters;
}

}  // namespace fiar
