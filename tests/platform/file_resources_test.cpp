#include "platform/file_resources.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace fiar {
namespace {

// The number in `count` bytes from `offset` on, the lowest byte first.
unsigned numberAt(const std::string& bytes, std::size_t offset, std::size_t count) {
  unsigned number = 0;
  for (std::size_t i = count; i-- > 0;) {
    number = (number << 8) | static_cast<unsigned char>(bytes.at(offset + i));
  }
  return number;
}

const FileResources kResources(FIAR_RESOURCE_DIR);

TEST(ShippedResources, AreFoundByNumberOrNameInAnyCase) {
  EXPECT_TRUE(kResources.custom(u"wavTap").has_value());
  for (const TextView name : {u"", u"WAV"}) EXPECT_FALSE(kResources.custom(name).has_value());
  for (const unsigned number : {0U, 103U}) EXPECT_FALSE(kResources.custom(number).has_value());
  EXPECT_FALSE(FileResources("no such folder").custom(102).has_value());
}

TEST(ShippedResources, PatternTableEndsInTwoNuls) {
  const std::string table = kResources.custom(102).value();
  EXPECT_EQ(table.size(), 3932U);
  EXPECT_TRUE(table.starts_with("0000P0000,0\r\n0000P0001,1\r\n"));
  EXPECT_TRUE(table.ends_with(std::string("\r\n1111P1111,5004492\0\0", 21)));
}

TEST(ShippedResources, SoundsHaveTheirFormatsAndLengths) {
  struct Case {
    TextView name;
    std::size_t size;
    unsigned tag;
    unsigned bits;
    unsigned data;
  };
  constexpr std::size_t kFormat = 20;  // the format comes first in the file
  for (const Case& c : {Case{u"WAVTAP", 1192, 2, 4, 1024}, Case{u"WAVERR", 23272, 1, 16, 21244}}) {
    SCOPED_TRACE(toUtf8(c.name));
    const std::string image = kResources.custom(c.name).value();
    EXPECT_EQ(image.size(), c.size);
    EXPECT_EQ(image.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(numberAt(image, kFormat, 2), c.tag);
    EXPECT_EQ(numberAt(image, kFormat + 2, 2), 2U);
    EXPECT_EQ(numberAt(image, kFormat + 4, 4), 22050U);
    EXPECT_EQ(numberAt(image, kFormat + 14, 2), c.bits);
    const std::size_t data = image.find("data");
    ASSERT_NE(data, std::string::npos);
    EXPECT_EQ(numberAt(image, data + 4, 4), c.data);
  }
}

TEST(ShippedResources, PicturesHaveTheirFormatsAndSizes) {
  for (const TextView name : {u"PICTURE2", u"PICTURE3"}) {
    const std::string picture = kResources.custom(name).value();
    EXPECT_TRUE(picture.starts_with("GIF8")) << toUtf8(name);
    EXPECT_EQ(numberAt(picture, 6, 2), 119U);
    EXPECT_EQ(numberAt(picture, 8, 2), 157U);
  }
  EXPECT_NE(kResources.custom(u"PICTURE2"), kResources.custom(u"PICTURE3"));
  // A JPEG's frame segment: length, bits, then height and width with the high bytes first. Twice the size
  // that is shown at 96 DPI, so that it stays sharp on finer displays, and that size.
  for (const auto& [name, times] : {std::pair{u"BACKGROUND", 2U}, {u"BACKGROUNDSMALL", 1U}}) {
    const std::string background = kResources.custom(name).value();
    ASSERT_TRUE(background.starts_with("\xFF\xD8\xFF"));
    const std::size_t frame = background.find(std::string("\xFF\xC0\x00\x11\x08", 5));
    ASSERT_NE(frame, std::string::npos);
    EXPECT_EQ(numberAt(background, frame + 5, 1) * 256 + numberAt(background, frame + 6, 1), times * 680);
    EXPECT_EQ(numberAt(background, frame + 7, 1) * 256 + numberAt(background, frame + 8, 1), times * 806);
  }
}

TEST(ShippedResources, IconHasEverySizeThatWindowsShows) {
  std::ifstream file(std::filesystem::path(FIAR_RESOURCE_DIR) / "icon.ico", std::ios::binary);
  const std::string icon(std::istreambuf_iterator<char>(file), {});
  std::vector<unsigned> sizes;
  for (std::size_t entry = 6; sizes.size() < numberAt(icon, 4, 2); entry += 16) {
    sizes.push_back(numberAt(icon, entry, 1));
    EXPECT_LE(numberAt(icon, entry + 8, 4) + numberAt(icon, entry + 12, 4), icon.size());
  }
  EXPECT_EQ(sizes, (std::vector<unsigned>{16, 20, 24, 32, 48, 64, 0})) << "0 stands for 256";
}

}  // namespace
}  // namespace fiar
