#include "platform/file_resources.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string_view>

namespace fiar {
namespace {

// The number in `count` bytes from `offset` on, the lowest byte first; fails the test beyond the end.
unsigned numberAt(std::string_view bytes, std::size_t offset, std::size_t count) {
  EXPECT_LE(offset + count, bytes.size());
  unsigned number = 0;
  for (std::size_t i = count; i-- > 0;) {
    number = (number << 8) | static_cast<unsigned char>(offset + i < bytes.size() ? bytes[offset + i] : '\0');
  }
  return number;
}

// The body of a chunk of a WAVE file; empty where there is none.
std::string_view waveChunk(std::string_view wave, std::string_view name) {
  for (std::size_t at = 12; at + 8 <= wave.size();) {
    const std::size_t length = numberAt(wave, at + 4, 4);
    if (wave.substr(at, 4) == name) return wave.substr(at + 8, length);
    at += 8 + length + length % 2;
  }
  return {};
}

class ShippedResources : public testing::Test {
protected:
  FileResources resources{FIAR_RESOURCE_DIR};
};

TEST_F(ShippedResources, AreFoundByNumberOrNameInAnyCase) {
  EXPECT_TRUE(resources.custom(u"wavTap").has_value());
  EXPECT_FALSE(resources.custom(u"WAV").has_value());
  EXPECT_FALSE(resources.custom(u"").has_value());
  EXPECT_FALSE(resources.custom(0).has_value());
  EXPECT_FALSE(resources.custom(103).has_value());
  EXPECT_FALSE(FileResources("no such folder").custom(102).has_value());
}

TEST_F(ShippedResources, PatternTableHas256LinesAndTwoNuls) {
  const std::string table = resources.custom(102).value();
  EXPECT_EQ(table.size(), 3932U);
  EXPECT_TRUE(table.starts_with("0000P0000,0\r\n0000P0001,1\r\n"));
  EXPECT_TRUE(table.ends_with(std::string("\r\n1111P1111,5004492\0\0", 21)));
}

TEST_F(ShippedResources, SoundsHaveTheirFormatsAndLengths) {
  struct Case {
    TextView name;
    std::size_t size;
    unsigned tag;
    unsigned bits;
    std::size_t data;
  };
  for (const Case& c : {Case{u"WAVTAP", 1192, 2, 4, 1024}, Case{u"WAVERR", 23272, 1, 16, 21244}}) {
    SCOPED_TRACE(toUtf8(c.name));
    const std::string image = resources.custom(c.name).value();
    EXPECT_EQ(image.size(), c.size);
    const std::string_view format = waveChunk(image, "fmt ");
    EXPECT_EQ(numberAt(format, 0, 2), c.tag);
    EXPECT_EQ(numberAt(format, 2, 2), 2U);
    EXPECT_EQ(numberAt(format, 4, 4), 22050U);
    EXPECT_EQ(numberAt(format, 14, 2), c.bits);
    const std::string_view data = waveChunk(image, "data");
    EXPECT_EQ(data.size(), c.data);
    EXPECT_NE(data.find_first_not_of(data.front()), std::string_view::npos) << "no sound in it";
  }
}

TEST_F(ShippedResources, PicturesHaveTheirFormatsAndSizes) {
  for (const TextView name : {u"PICTURE2", u"PICTURE3"}) {
    const std::string picture = resources.custom(name).value();
    EXPECT_TRUE(picture.starts_with("GIF8")) << toUtf8(name);
    EXPECT_EQ(numberAt(picture, 6, 2), 119U);
    EXPECT_EQ(numberAt(picture, 8, 2), 157U);
  }
  EXPECT_NE(resources.custom(u"PICTURE2"), resources.custom(u"PICTURE3"));
}

// Twice the size in which it is shown at 96 DPI, so that it stays sharp on finer displays.
TEST_F(ShippedResources, BackgroundIsABaselineJpegOfTwiceItsSize) {
  const std::string picture = resources.custom(u"BACKGROUND").value();
  ASSERT_TRUE(picture.starts_with("\xFF\xD8\xFF"));
  // The size stands in the start-of-frame segment, high bytes first: length, bits, height, width.
  const std::size_t frame = picture.find(std::string("\xFF\xC0\x00\x11\x08", 5));
  ASSERT_NE(frame, std::string::npos);
  const auto bigEndian = [&picture, frame](std::size_t offset) {
    return numberAt(picture, frame + offset, 1) * 256 + numberAt(picture, frame + offset + 1, 1);
  };
  EXPECT_EQ(bigEndian(5), 2U * 680);
  EXPECT_EQ(bigEndian(7), 2U * 806);
}

TEST_F(ShippedResources, IconHasEverySizeThatWindowsShows) {
  std::ifstream file(std::filesystem::path(FIAR_RESOURCE_DIR) / "icon.ico", std::ios::binary);
  const std::string icon(std::istreambuf_iterator<char>(file), {});
  constexpr std::size_t kEntry = 16;
  std::vector<unsigned> sizes;
  for (std::size_t i = 0; i < numberAt(icon, 4, 2); ++i) {
    const std::size_t entry = 6 + i * kEntry;
    sizes.push_back(numberAt(icon, entry, 1));
    EXPECT_EQ(numberAt(icon, entry + 1, 1), sizes.back());
    EXPECT_LE(numberAt(icon, entry + 8, 4) + numberAt(icon, entry + 12, 4), icon.size());
  }
  EXPECT_EQ(sizes, (std::vector<unsigned>{16, 20, 24, 32, 48, 64, 0})) << "0 stands for 256";
}

}  // namespace
}  // namespace fiar
