#include "toolkit/file_content.h"

#include <array>

#include "platform/files.h"

namespace fiar {

std::string fileContent(TextView path) {
  const OpenFile file = openToRead(path);
  if (file == nullptr) return {};
  std::string content;
  std::array<char, 16384> part{};
  for (std::size_t length = 0; (length = std::fread(part.data(), 1, part.size(), file.get())) > 0;) {
    content.append(part.data(), length);
  }
  return content;
}

TextView fileNamePart(TextView path) {
  return path.substr(path.find_last_of(u"\\/:") + 1);
}

}  // namespace fiar
