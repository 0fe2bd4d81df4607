#include "platform/wave_image.h"

#include <cstddef>
#include <cstdint>

namespace fiar {
namespace {

// A chunk: four letters, the length of its body (32 bits, low byte first), the body, a pad byte to an even
// length.
constexpr std::size_t kChunkHeader = 8;
// The file is one chunk "RIFF" whose body starts with the four letters "WAVE".
constexpr std::size_t kFormLetters = 4;
// Format tag, channels, samples and bytes a second, block size, bits a sample.
constexpr std::size_t kShortestFormat = 16;

std::size_t bodyLength(std::string_view chunk) {
  std::uint32_t length = 0;
  for (std::size_t i = kChunkHeader; i-- > 4;) length = (length << 8) | static_cast<std::uint8_t>(chunk[i]);
  return length;
}

}  // namespace

bool isPlayableWave(std::string_view image) {
  if (image.size() < kChunkHeader + kFormLetters || !image.starts_with("RIFF")) return false;
  const std::size_t formLength = bodyLength(image);
  if (formLength < kFormLetters || formLength > image.size() - kChunkHeader) return false;
  std::string_view rest = image.substr(kChunkHeader, formLength);
  if (!rest.starts_with("WAVE")) return false;
  rest.remove_prefix(kFormLetters);

  bool format = false;
  bool data = false;
  while (rest.size() >= kChunkHeader) {
    const std::size_t length = bodyLength(rest);
    if (length > rest.size() - kChunkHeader) return false;
    format = format || (rest.starts_with("fmt ") && length >= kShortestFormat);
    data = data || (format && rest.starts_with("data") && length > 0);
    const std::size_t padded = kChunkHeader + length + length % 2;
    rest.remove_prefix(padded < rest.size() ? padded : rest.size());
  }
  return data;
}

}  // namespace fiar
