#include "toolkit/file_content.h"

#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "platform/files.h"

namespace fiar {

std::string fileContent(TextView path) {
  const std::filesystem::path native = nativePath(path);
  std::error_code failed;
  // Reading a pipe or a device could wait for ever.
  if (!std::filesystem::is_regular_file(native, failed)) return {};
  std::ifstream file(native, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return std::move(content).str();
}

TextView fileNamePart(TextView path) {
  return path.substr(path.find_last_of(u"\\/:") + 1);
}

}  // namespace fiar
