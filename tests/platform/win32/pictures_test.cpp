#include "platform/win32/pictures.h"

#include <gtest/gtest.h>

#include <map>

#include "platform/file_resources.h"
#include "platform/win32/com.h"

namespace fiar::win32 {
namespace {

class PicturesTest : public testing::Test, protected Resources {
protected:
  std::optional<std::string> custom(unsigned /*number*/) const override { return std::nullopt; }
  std::optional<std::string> custom(TextView name) const override {
    const auto found = files.find(Text(name));
    return found == files.end() ? std::nullopt : std::optional(found->second);
  }

  std::vector<std::uint32_t> shown(int width, int height) const {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    Pictures(*this).show({u"PICTURE"}, {pixels.data(), width, height, width});
    return pixels;
  }
  static std::string shipped(TextView name) { return FileResources(FIAR_RESOURCE_DIR).custom(name).value(); }

  const ComApartment apartment;
  std::map<Text, std::string> files;
};

TEST_F(PicturesTest, ShowTheSmallCopyWhereItIsLargeEnough) {
  constexpr int kWidth = 119;
  constexpr int kHeight = 157;
  files[u"PICTURE"] = shipped(u"PICTURE2");
  const auto large = shown(kWidth, kHeight);
  const auto larger = shown(kWidth, kHeight + 1);
  files[u"PICTURESMALL"] = shipped(u"PICTURE3");
  EXPECT_NE(shown(kWidth, kHeight), large);
  EXPECT_EQ(shown(kWidth, kHeight + 1), larger);
  // The picture itself can be missed before it is needed.
  files.erase(u"PICTURE");
  EXPECT_NE(shown(kWidth, kHeight), large);
  EXPECT_THROW(Pictures(*this).check({u"PICTURE"}), PictureError);
}

TEST_F(PicturesTest, CutOffAnywhereAreShownInPartOrRefused) {
  for (const auto& [name, step] : {std::pair{u"PICTURE2", 131U}, {u"BACKGROUNDSMALL", 509U}}) {
    const std::string whole = shipped(name);
    int refused = 0;
    for (std::size_t length = 0; length < whole.size(); length += step) {
      files[u"PICTURE"] = whole.substr(0, length);
      try {
        shown(40, 30);
      } catch (const PictureError&) {
        ++refused;
      }
    }
    EXPECT_GT(refused, 0) << toUtf8(name);
  }
}

TEST_F(PicturesTest, AreNamedWhereTheyAreMissingOrDamaged) {
  files = {{u"EMPTY", ""}, {u"TEXT", "no picture at all"}, {u"HEADER", shipped(u"PICTURE2").substr(0, 9)}};
  for (const TextView name : {u"MISSING", u"EMPTY", u"TEXT", u"HEADER"}) {
    try {
      Pictures(*this).check({name});
      ADD_FAILURE() << toUtf8(name);
    } catch (const PictureError& error) {
      EXPECT_NE(std::string(error.what()).find(toUtf8(name)), std::string::npos) << error.what();
    }
  }
}

}  // namespace
}  // namespace fiar::win32
