#include <algorithm>

#include "platform/files.h"

namespace fiar {

std::filesystem::path nativePath(TextView path) {
  std::string native = toUtf8(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

OpenFile openToAppend(TextView path) {
  return OpenFile(std::fopen(nativePath(path).c_str(), "ab"));
}

OpenFile openToRead(TextView path) {
  const std::filesystem::path native = nativePath(path);
  std::error_code failed;
  if (!std::filesystem::is_regular_file(native, failed)) return nullptr;
  return OpenFile(std::fopen(native.c_str(), "rb"));
}

}  // namespace fiar
