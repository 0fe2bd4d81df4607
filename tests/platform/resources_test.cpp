// What the program ships, and what counts as a sound.

#include <gtest/gtest.h>

#include "platform/wave_image.h"
#include "support/file_resources.h"

namespace fiar {
namespace {

using namespace std::literals;

TEST(ShippedResources, HaveTheirFormatsAndSizes) {
  const test::FileResources resources;
  EXPECT_TRUE(resources.custom(102).value().ends_with("\r\n1111P1111,5004492\0\0"sv));
  // Sounds: coding, two channels, 22050 Hz, bytes a second and a block, bits; length. Pictures: 119 x 157
  // pixels; 1612 x 1360, so that it stays sharp on fine displays; half of that, which 96 DPI show.
  const struct {
    TextView name;
    std::size_t size;  ///< 0: any
    std::string_view part;
  } cases[] = {{u"WAVTAP", 1192, "WAVEfmt \x32\0\0\0\x02\0\x02\0\x22\x56\0\0\x27\x57\0\0\0\x04\x04\0"sv},
               {u"WAVTAP", 1192, "data\0\x04\0\0"sv},
               {u"WAVERR", 23272,
                "WAVEfmt \x10\0\0\0\x01\0\x02\0\x22\x56\0\0\x88\x58\x01\0\x04\0\x10\0data\xFC\x52\0\0"sv},
               {u"PICTURE2", 0, "GIF89a\x77\0\x9D\0"sv},
               {u"PICTURE3", 0, "GIF89a\x77\0\x9D\0"sv},
               {u"BACKGROUND", 0, "\xFF\xC0\0\x11\x08\x05\x50\x06\x4C"sv},
               {u"BACKGROUNDSMALL", 0, "\xFF\xC0\0\x11\x08\x02\xA8\x03\x26"sv}};
  for (const auto& [name, size, part] : cases) {
    const std::string bytes = resources.custom(name).value();
    EXPECT_NE(bytes.find(part), std::string::npos) << testing::PrintToString(name);
    EXPECT_TRUE(size == 0 || (size == bytes.size() && isPlayableWave(bytes))) << testing::PrintToString(name);
  }
  EXPECT_NE(resources.custom(u"PICTURE2"), resources.custom(u"PICTURE3"));
}

std::string chunk(const std::string& name, const std::string& body) {
  return name + static_cast<char>(body.size()) + "\0\0\0"s + body + std::string(body.size() % 2, '\0');
}

TEST(WaveImage, IsPlayableWhenWholeOnly) {
  const std::string format = chunk("fmt ", std::string(16, '\1'));
  const std::string data = chunk("data", "abc");
  const std::string playable = format + data;
  const std::string tooLong = "data\xFF\xFF\xFF\xFF\x61"s;
  const auto wave = [](const std::string& chunks) { return chunk("RIFF", "WAVE" + chunks); };

  const std::string whole = wave(chunk("LIST", "odd") + playable);
  EXPECT_TRUE(isPlayableWave(whole + "after the end"));
  // The last pad byte may be missing.
  EXPECT_TRUE(isPlayableWave(wave(format + data.substr(0, data.size() - 1))));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // A copy of its own, so that a read beyond the end is noticed.
    EXPECT_FALSE(isPlayableWave(std::string(whole, 0, length))) << length;
  }
  for (const std::string& image :
       {chunk("RIFF", "WEVA" + playable), chunk("RIFX", "WAVE" + playable), wave(""), wave(format),
        wave(data), wave(data + format), wave(format + chunk("data", "")),
        wave(chunk("fmt ", std::string(15, '\1')) + data), wave(format + tooLong),
        wave(playable + tooLong)}) {
    EXPECT_FALSE(isPlayableWave(image)) << testing::PrintToString(image);
  }
}

}  // namespace
}  // namespace fiar
