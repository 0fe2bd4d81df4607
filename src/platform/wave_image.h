#pragma once

#include <string_view>

namespace fiar {

/// Whether these bytes are a whole RIFF WAVE file with a format and sound data, all of it inside the bytes.
/// The system's player trusts the lengths in the file, so only such an image may be handed to it.
bool isPlayableWave(std::string_view image);

}  // namespace fiar
