#include "platform/files.h"
#include "platform/win32/wide_text.h"

namespace fiar {

std::filesystem::path nativePath(TextView path) {
  return win32::toWide(path);
}

}  // namespace fiar
