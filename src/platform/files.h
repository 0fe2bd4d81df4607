#pragma once

#include <cstdio>
#include <memory>

#include "platform/text.h"

namespace fiar {

// Paths are written with "\\" (and "/") between folders.

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A file that is open, or none. The C library's files, because the streams would make the program half as
/// large again.
using OpenFile = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a file to add bytes to its end, and creates it where there is none. None when it cannot.
OpenFile openToAppend(TextView path);

/// Opens a file to read its bytes. None when it cannot, and for what is not a plain file: reading a pipe or a
/// device could wait forever.
OpenFile openToRead(TextView path);

}  // namespace fiar
