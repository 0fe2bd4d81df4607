#include "platform/wave_image.h"

#include <gtest/gtest.h>

#include "platform/file_resources.h"

namespace fiar {
namespace {

std::string chunk(const std::string& name, std::string body) {
  std::string bytes = name;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(body.size() >> shift);
  if (body.size() % 2 != 0) body += '\0';
  return bytes + body;
}

std::string wave(const std::string& chunks) {
  return chunk("RIFF", "WAVE" + chunks);
}

const std::string kFormat = chunk("fmt ", std::string(16, '\1'));
const std::string kData = chunk("data", "ab");
const std::string kPlayable = kFormat + kData;

TEST(WaveImage, IsPlayableWhenWhole) {
  EXPECT_TRUE(isPlayableWave(wave(kPlayable)));
  EXPECT_TRUE(isPlayableWave(wave(chunk("LIST", "odd") + kFormat + chunk("data", "abc")) + "after the end"));
  // The last pad byte may be missing.
  const std::string padded = chunk("data", "abc");
  EXPECT_TRUE(isPlayableWave(wave(kFormat + padded.substr(0, padded.size() - 1))));
}

TEST(WaveImage, IsNotPlayableWhenAnythingIsAmiss) {
  const std::string tooLong = std::string("data\xFF\xFF\xFF\xFF", 8) + "ab";
  for (const std::string& image :
       {std::string(), std::string("RIFF"), chunk("RIFF", "WEVA" + kPlayable),
        chunk("RIFX", "WAVE" + kPlayable), wave(""), wave(kFormat), wave(kData), wave(kData + kFormat),
        wave(kFormat + chunk("data", "")), wave(chunk("fmt ", std::string(15, '\1')) + kData),
        wave(kFormat + tooLong), wave(kPlayable + tooLong)}) {
    EXPECT_FALSE(isPlayableWave(image)) << testing::PrintToString(image);
  }
}

TEST(WaveImage, IsNotPlayableWhenCutOffAnywhere) {
  const std::string whole = FileResources(FIAR_RESOURCE_DIR).custom(u"WAVTAP").value();
  ASSERT_TRUE(isPlayableWave(whole));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // A copy of its own, so that a read beyond the end is noticed.
    ASSERT_FALSE(isPlayableWave(std::string(whole, 0, length))) << length;
  }
}

}  // namespace
}  // namespace fiar
