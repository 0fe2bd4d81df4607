#include <sys/stat.h>

#include "platform/files.h"
#include "win32/wide_text.h"

namespace fiar {

OpenFile openToAppend(TextView path) {
  return OpenFile(_wfopen(win32::toWide(path).c_str(), L"ab"));
}

OpenFile openToRead(TextView path) {
  const std::wstring native = win32::toWide(path);
  struct _stat64 status {};
  if (_wstat64(native.c_str(), &status) != 0 || (status.st_mode & S_IFMT) != S_IFREG) return nullptr;
  return OpenFile(_wfopen(native.c_str(), L"rb"));
}

}  // namespace fiar
