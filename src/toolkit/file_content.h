#pragma once

#include <string>

#include "platform/text.h"

namespace fiar {

/// All bytes of a file; none for what cannot be read or is not a plain file. May throw std::bad_alloc only.
std::string fileContent(TextView path);

/// The part of a path behind its last "\", "/" or drive letter's ":"; the whole path where it has none.
TextView fileNamePart(TextView path);

}  // namespace fiar
