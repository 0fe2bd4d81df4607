#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "platform/wave_image.h"
#include "support/file_resources.h"

namespace fiar {
namespace {

using namespace std::literals;

const test::FileResources kResources;

TEST(ShippedResources, HaveTheirFormatsAndSizes) {
  const std::string table = kResources.custom(102).value();
  EXPECT_EQ(table.size(), 3932U);
  EXPECT_TRUE(table.ends_with("\r\n1111P1111,5004492\0\0"sv));
  // Sounds: coding, two channels, 22050 Hz, bytes a second and a block, bits; length. Pictures: 119 x 157
  // pixels; 1612 x 1360, so that it stays sharp on fine displays; half of that, which 96 DPI show.
  const std::pair<TextView, std::string_view> parts[] = {
      {u"WAVTAP", "WAVEfmt \x32\0\0\0\x02\0\x02\0\x22\x56\0\0\x27\x57\0\0\0\x04\x04\0"sv},
      {u"WAVTAP", "data\0\x04\0\0"sv},
      {u"WAVERR", "WAVEfmt \x10\0\0\0\x01\0\x02\0\x22\x56\0\0\x88\x58\x01\0\x04\0\x10\0data\xFC\x52\0\0"sv},
      {u"PICTURE2", "GIF89a\x77\0\x9D\0"sv},
      {u"PICTURE3", "GIF89a\x77\0\x9D\0"sv},
      {u"BACKGROUND", "\xFF\xC0\0\x11\x08\x05\x50\x06\x4C"sv},
      {u"BACKGROUNDSMALL", "\xFF\xC0\0\x11\x08\x02\xA8\x03\x26"sv}};
  for (const auto& [name, bytes] : parts) {
    EXPECT_NE(kResources.custom(name).value().find(bytes), std::string::npos)
        << testing::PrintToString(name) << " lacks " << testing::PrintToString(bytes);
  }
  EXPECT_NE(kResources.custom(u"PICTURE2"), kResources.custom(u"PICTURE3"));
  for (const auto& [name, size] : {std::pair{u"WAVTAP", 1192U}, {u"WAVERR", 23272U}}) {
    const std::string sound = kResources.custom(name).value();
    EXPECT_EQ(sound.size(), size);
    EXPECT_TRUE(isPlayableWave(sound));
  }
}

TEST(ShippedResources, IconHasEverySizeThatWindowsShows) {
  std::ifstream file(std::filesystem::path(FIAR_RESOURCE_DIR) / "icon.ico", std::ios::binary);
  const std::string icon(std::istreambuf_iterator<char>(file), {});
  std::string sizes = icon.substr(4, 1);  // the count; then the first byte of each entry: 0 stands for 256
  for (std::size_t entry = 0; entry < 7; ++entry) sizes += icon.at(6 + 16 * entry);
  EXPECT_EQ(sizes, "\x07\x10\x14\x18\x20\x30\x40\0"sv);
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
