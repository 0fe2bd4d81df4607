#include "platform/code_page.h"

#include <algorithm>

namespace fiar {

CodePage::CodePage(const Characters& characters, const Bytes& nearest)
    : characters_(characters), bytes_(nearest) {
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

}  // namespace fiar
