#include "platform/files.h"
#include "win32/wide_text.h"

namespace fiar {

std::filesystem::path nativePath(TextView path) {
  return win32::toWide(path);
}

}  // namespace fiar
