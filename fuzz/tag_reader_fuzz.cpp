// Reads tagged text of any kind; the unit tests compare what comes of it. The input is the path, a line feed
// and the text, one byte a character.

#include <algorithm>
#include <cstdint>

#include "toolkit/clsZantorXml.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fiar::Text input(data, data + size);
  const std::size_t line = std::min(input.find(u'\n'), size);
  const fiar::Text text = input.substr(std::min(line + 1, size));
  fiar::Text params;
  fiar::clsZantorXml().getTag(text, input.substr(0, line), params, u"d", u"n");
  return 0;
}
