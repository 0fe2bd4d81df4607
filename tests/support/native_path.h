#pragma once

#include <algorithm>
#include <filesystem>

#include "platform/text.h"

namespace fiar::test {

/// The file system's form of a path that is written as the program writes paths.
inline std::filesystem::path nativePath(TextView path) {
  Text native(path);
  std::replace(native.begin(), native.end(), u'\\', u'/');
  return native;
}

}  // namespace fiar::test
