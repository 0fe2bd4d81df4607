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

TEST(ImageScaler, KeepsPlainColoursAndTheSameSizeExactly) {
  for (const auto& [width, height] : {std::pair{1, 1}, {7, 5}, {119, 157}, {40, 300}}) {
    Image plain(31, 45, 0xFF12FE80);
    Image target(width, height, 0, 3);
    scaleImage(plain.view, target.view);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) ASSERT_EQ(target.view.row(y)[x], 0x0012FE80U) << x << "," << y;
      // Nothing is written between the rows.
      ASSERT_EQ(target.view.row(y)[width], 0U);
    }
  }
  Image source(50, 70, 0);
  for (std::size_t i = 0; i < source.pixels.size(); ++i) {
    source.pixels[i] = static_cast<std::uint32_t>(i * 2654435761U) & 0x00FFFFFF;
  }
  Image copy(50, 70, 0);
  scaleImage(source.view, copy.view);
  EXPECT_EQ(copy.pixels, source.pixels);
}

TEST(ImageScaler, KeepsPlacesAndBrightnessAndStaysInRange) {
  // A white upper left quarter, at half, at three times and at an odd size.
  Image source(80, 80, 0);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) source.view.row(y)[x] = 0x00FFFFFF;
  }
  for (const int size : {40, 240, 53}) {
    Image target(size, size, 0);
    scaleImage(source.view, target.view);
    double sum = 0;
    for (const std::uint32_t pixel : target.pixels) {
      EXPECT_EQ(pixel & 0xFF, (pixel >> 8) & 0xFF);
      sum += pixel & 0xFF;
    }
    EXPECT_NEAR(sum / (size * size), 255 / 4.0, 1) << size;
    const int before = size / 2 - size / 10;
    const int behind = size / 2 + size / 10;
    EXPECT_EQ(target.view.row(before)[before], 0x00FFFFFFU) << size;
    EXPECT_EQ(target.view.row(before)[behind], 0U) << size;
    EXPECT_EQ(target.view.row(behind)[before], 0U) << size;
  }
}

TEST(ImageScaler, LeavesTheTargetWhereThereIsNoImage) {
  Image target(3, 3, 7);
  scaleImage({}, target.view);
  EXPECT_EQ(target.pixels, std::vector<std::uint32_t>(9, 7));
  Image source(3, 3, 7);
  scaleImage(source.view, {});
}

}  // namespace
}  // namespace fiar
