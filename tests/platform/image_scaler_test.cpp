#include "platform/image_scaler.h"

#include <gtest/gtest.h>

#include <vector>

namespace fiar {
namespace {

struct Image {
  std::vector<std::uint32_t> pixels;
  BitmapView view;

  Image(int width, int height, std::uint32_t pixel, int gap = 0)
      : pixels(static_cast<std::size_t>((width + gap) * height), pixel),
        view{pixels.data(), width, height, width + gap} {}
};

TEST(ImageScaler, KeepsPlainColoursAndWritesNothingBetweenTheRows) {
  const Image plain(31, 45, 0xFF12FE80);
  for (const auto& [width, height] : {std::pair{1, 1}, {7, 5}, {31, 45}, {119, 157}, {40, 300}}) {
    Image target(width, height, 0, 3);
    scaleImage(plain.view, target.view);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width + 3; ++x) {
        ASSERT_EQ(target.view.row(y)[x], x < width ? 0x0012FE80U : 0U) << x << "," << y;
      }
    }
  }
}

TEST(ImageScaler, KeepsPlacesAndBrightnessAndStaysInRange) {
  // A white upper left quarter, at half, at three times, at an odd and at its own size.
  Image source(80, 80, 0);
  for (int y = 0; y < 40; ++y) std::fill_n(source.view.row(y), 40, 0x00FFFFFF);
  for (const int size : {40, 240, 53, 80}) {
    SCOPED_TRACE(size);
    const Image target(size, size, 0);
    scaleImage(source.view, target.view);
    double sum = 0;
    for (const std::uint32_t pixel : target.pixels) {
      EXPECT_EQ(pixel & 0xFF, (pixel >> 8) & 0xFF);
      sum += pixel & 0xFF;
    }
    EXPECT_NEAR(sum / (size * size), 255 / 4.0, 1);
    const int before = size / 2 - size / 10;
    const int behind = size / 2 + size / 10;
    EXPECT_EQ(target.view.row(before)[before], 0x00FFFFFFU);
    EXPECT_EQ(target.view.row(before)[behind], 0U);
    EXPECT_EQ(target.view.row(behind)[before], 0U);
    EXPECT_TRUE(size != 80 || target.pixels == source.pixels);
  }
}

TEST(ImageScaler, LeavesTheTargetWhereThereIsNoImage) {
  const Image image(3, 3, 7);
  scaleImage({}, image.view);
  EXPECT_EQ(image.pixels, std::vector<std::uint32_t>(9, 7));
  scaleImage(image.view, {});
}

}  // namespace
}  // namespace fiar
