#include "forms/image_scaler.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace fiar {
namespace {

// How far the curve reaches from its middle, in pixels of the coarser image.
constexpr double kReach = 2;
constexpr std::uint32_t kColor = 0x00FFFFFF;

double catmullRom(double distance) {
  const double x = std::abs(distance);
  if (x < 1) return (1.5 * x - 2.5) * x * x + 1;
  if (x < kReach) return ((-0.5 * x + 2.5) * x - 4) * x + 2;
  return 0;
}

/// An image of its own memory, without gaps between the rows.
class Image {
public:
  Image(int width, int height)
      : pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)), width_(width) {}
  /// The first rows of it.
  BitmapView rows(int height) { return {pixels_.data(), width_, height, width_}; }
  /// The first columns of all rows.
  BitmapView columns(int width) {
    return {pixels_.data(), width, static_cast<int>(pixels_.size()) / width_, width_};
  }

private:
  std::vector<std::uint32_t> pixels_;
  int width_;
};

/// The rows of the source that make up one row of the target, and the share of each.
struct Taps {
  int first = 0;
  std::vector<float> weights;
};

void findTaps(int targetRow, double sourcePerTarget, int sourceHeight, Taps& taps) {
  const double stretch = std::max(1.0, sourcePerTarget);
  const double middle = (targetRow + 0.5) * sourcePerTarget - 0.5;
  taps.first = std::clamp(static_cast<int>(std::ceil(middle - kReach * stretch)), 0, sourceHeight - 1);
  const int last = std::clamp(static_cast<int>(middle + kReach * stretch), taps.first, sourceHeight - 1);
  taps.weights.clear();
  double sum = 0;
  for (int row = taps.first; row <= last; ++row) {
    const double weight = catmullRom((row - middle) / stretch);
    taps.weights.push_back(static_cast<float>(weight));
    sum += weight;
  }
  for (float& weight : taps.weights) weight /= static_cast<float>(sum);
}

void addWeighted(const std::uint8_t* channels, float weight, float* sums, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) sums[i] += weight * static_cast<float>(channels[i]);
}

void storeRounded(const float* sums, std::uint8_t* channels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const float limited = std::min(std::max(sums[i] + 0.5F, 0.0F), 255.0F);
    channels[i] = static_cast<std::uint8_t>(static_cast<int>(limited));
  }
}

/// Changes the height to `height` rows and gives those from `firstRow` on, as many as the target has. All
/// channels of a row are alike to it, so that several are reckoned at a time.
void scaleHeight(const BitmapView& source, int height, int firstRow, const BitmapView& target) {
  std::vector<float> sums(static_cast<std::size_t>(source.width) * sizeof(std::uint32_t));
  Taps taps;
  for (int y = 0; y < target.height; ++y) {
    findTaps(firstRow + y, static_cast<double>(source.height) / height, source.height, taps);
    std::fill(sums.begin(), sums.end(), 0.0F);
    int sourceRow = taps.first;
    for (const float weight : taps.weights) {
      addWeighted(reinterpret_cast<const std::uint8_t*>(source.row(sourceRow++)), weight, sums.data(),
                  sums.size());
    }
    storeRounded(sums.data(), reinterpret_cast<std::uint8_t*>(target.row(y)), sums.size());
  }
}

void copy(const BitmapView& source, const BitmapView& target) {
  for (int y = 0; y < source.height; ++y) {
    std::transform(source.row(y), source.row(y) + source.width, target.row(y),
                   [](std::uint32_t pixel) { return pixel & kColor; });
  }
}

/// Turns rows into columns.
void transpose(const BitmapView& source, const BitmapView& target) {
  for (int x = 0; x < source.width; ++x) {
    std::uint32_t* to = target.row(x);
    for (int y = 0; y < source.height; ++y) to[y] = source.row(y)[x] & kColor;
  }
}

bool hasPixels(const BitmapView& image) {
  return image.pixels != nullptr && image.width > 0 && image.height > 0;
}

}  // namespace

void scaleImage(const BitmapView& source, const BitmapView& target) {
  if (!hasPixels(source) || !hasPixels(target)) return;
  if (source.width == target.width && source.height == target.height) {
    copy(source, target);
    return;
  }
  // Some rows at a time, so that what lies between the steps stays in the processor's cache.
  constexpr int kBand = 32;
  Image lowered(source.width, kBand);
  Image turned(kBand, source.width);
  Image narrowed(kBand, target.width);
  for (int top = 0; top < target.height; top += kBand) {
    const int rows = std::min(kBand, target.height - top);
    scaleHeight(source, target.height, top, lowered.rows(rows));
    transpose(lowered.rows(rows), turned.columns(rows));
    scaleHeight(turned.columns(rows), target.width, 0, narrowed.columns(rows));
    transpose(narrowed.columns(rows), {target.row(top), target.width, rows, target.stride});
  }
}

}  // namespace fiar
