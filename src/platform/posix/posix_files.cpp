#include <algorithm>

#include "platform/files.h"

namespace fiar {

std::filesystem::path nativePath(TextView path) {
  std::string native = toUtf8(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

}  // namespace fiar
