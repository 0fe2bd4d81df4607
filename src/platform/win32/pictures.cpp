#include "platform/win32/pictures.h"

#include <algorithm>
#include <utility>

#include "platform/image_scaler.h"
#include "platform/win32/com.h"
// After <windows.h>, whose types it uses.
#include <wincodec.h>

namespace fiar::win32 {
namespace {

// Larger ones are damaged: no picture of the program comes near it.
constexpr UINT kLargestSide = 16384;
// What a converter is asked for at a time: it needs as much memory again.
constexpr UINT kStripRows = 64;

constexpr TextView kSmallCopy = u"SMALL";

/// An image of which the size is known and nothing is decoded yet.
struct OpenImage {
  std::string file;
  ComPointer<IWICFormatConverter> pixels;  ///< the first frame's, as BitmapView has them
  UINT width = 0;
  UINT height = 0;
};

ComPointer<IWICFormatConverter> openFirstFrame(std::string& file) {
  const auto factory = obtain<IWICImagingFactory>("CoCreateInstance", [](IWICImagingFactory** object) {
    return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                            reinterpret_cast<void**>(object));
  });
  const auto stream =
      obtain<IWICStream>("CreateStream", [&](IWICStream** object) { return factory->CreateStream(object); });
  requireSuccess(
      stream->InitializeFromMemory(reinterpret_cast<BYTE*>(file.data()), static_cast<DWORD>(file.size())),
      "InitializeFromMemory");
  const auto decoder = obtain<IWICBitmapDecoder>("CreateDecoderFromStream", [&](IWICBitmapDecoder** object) {
    return factory->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand, object);
  });
  const auto frame = obtain<IWICBitmapFrameDecode>(
      "GetFrame", [&](IWICBitmapFrameDecode** object) { return decoder->GetFrame(0, object); });
  auto converter = obtain<IWICFormatConverter>("CreateFormatConverter", [&](IWICFormatConverter** object) {
    return factory->CreateFormatConverter(object);
  });
  requireSuccess(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone,
                                       nullptr, 0, WICBitmapPaletteTypeCustom),
                 "Initialize");
  return converter;
}

/// Throws PictureError.
OpenImage open(const Resources& resources, TextView resource) {
  auto file = resources.custom(resource);
  if (!file) throw PictureError(resource, "it is missing");
  OpenImage image{.file = std::move(*file), .pixels = {}};
  try {
    image.pixels = openFirstFrame(image.file);
    requireSuccess(image.pixels->GetSize(&image.width, &image.height), "GetSize");
  } catch (const Error& error) {
    throw PictureError(resource, error.what());
  }
  if (image.width == 0 || image.height == 0 || image.width > kLargestSide || image.height > kLargestSide) {
    throw PictureError(resource, "its size is wrong");
  }
  return image;
}

void copyPixels(const OpenImage& image, std::vector<std::uint32_t>& pixels) {
  pixels.resize(std::size_t{image.width} * image.height);
  const UINT stride = image.width * static_cast<UINT>(sizeof(std::uint32_t));
  for (UINT top = 0; top < image.height; top += kStripRows) {
    const UINT rows = std::min(kStripRows, image.height - top);
    const WICRect strip{.X = 0,
                        .Y = static_cast<INT>(top),
                        .Width = static_cast<INT>(image.width),
                        .Height = static_cast<INT>(rows)};
    auto* const target = reinterpret_cast<BYTE*>(&pixels[std::size_t{image.width} * top]);
    requireSuccess(image.pixels->CopyPixels(&strip, stride, stride * rows, target), "CopyPixels");
  }
}

}  // namespace

PictureError::PictureError(TextView resource, const std::string& reason)
    : std::runtime_error("The picture \"" + toUtf8(resource) +
                         "\" in the program cannot be shown: " + reason) {}

void Pictures::show(const PictureRef& picture, const BitmapView& target) {
  const Text resource = resourceFor(picture, target);
  auto decoded =
      std::find_if(kept_.begin(), kept_.end(), [&](const Decoded& one) { return one.resource == resource; });
  if (decoded == kept_.end()) decoded = kept_.insert(kept_.end(), decode(resource));
  scaleImage({decoded->pixels.data(), decoded->width, decoded->height, decoded->width}, target);
  if (!keeping_) kept_.clear();
}

void Pictures::keepDecoded(bool keep) {
  keeping_ = keep;
  if (!keep) kept_.clear();
}

Text Pictures::resourceFor(const PictureRef& picture, const BitmapView& target) const {
  Text smallCopy = Text(picture.resource) + Text(kSmallCopy);
  if (!resources_.custom(smallCopy)) return Text(picture.resource);
  // The picture itself has to be there for the time when it is needed.
  open(resources_, picture.resource);
  const OpenImage image = open(resources_, smallCopy);
  const bool isLargeEnough =
      image.width >= static_cast<UINT>(target.width) && image.height >= static_cast<UINT>(target.height);
  return isLargeEnough ? smallCopy : Text(picture.resource);
}

Pictures::Decoded Pictures::decode(TextView resource) const {
  const OpenImage image = open(resources_, resource);
  Decoded decoded{Text(resource), static_cast<int>(image.width), static_cast<int>(image.height), {}};
  try {
    copyPixels(image, decoded.pixels);
  } catch (const Error& error) {
    throw PictureError(resource, error.what());
  }
  return decoded;
}

}  // namespace fiar::win32
