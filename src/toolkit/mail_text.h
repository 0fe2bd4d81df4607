#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace fiar {

/// The base64 form of bytes, padded and without line breaks.
Text base64(std::string_view bytes);

/// The text in lines of `width` characters (> 0) that are joined, not ended, by CR LF; the last line may be
/// shorter.
Text brokenIntoLines(TextView text, std::size_t width);

/// The entries of a list that are separated by ";", as they stand and empty ones included; none for an empty
/// list.
std::vector<Text> listEntries(TextView list);

/// A text of `length` random letters and digits that depends on the time too, so that it differs from call to
/// call however the generator is seeded.
Text uniqueText(const Platform& platform, std::size_t length);

}  // namespace fiar
