#pragma once

#include <filesystem>

#include "platform/text.h"

namespace fiar {

/// The file system's form of a path written with "\" (and "/") between folders.
std::filesystem::path nativePath(TextView path);

}  // namespace fiar
