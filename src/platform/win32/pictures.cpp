#include "platform/win32/pictures.h"

#include <algorithm>

#include "platform/image_scaler.h"
#include "platform/win32/com.h"
// After <windows.h>, whose types it uses.
#include <wincodec.h>

namespace fiar::win32 {
namespace {

// Larger ones are damaged: no picture of the program comes near it.
constexpr UINT kLargestSide = 16384;

/// The first frame of an image file, with pixels as BitmapView has them.
ComPointer<IWICFormatConverter> openImage(std::string& file) {
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

}  // namespace

PictureError::PictureError(TextView resource, const std::string& reason)
    : std::runtime_error("The picture \"" + toUtf8(resource) +
                         "\" in the program cannot be shown: " + reason) {}

void Pictures::show(const PictureRef& picture, const BitmapView& target) {
  auto decoded = std::find_if(kept_.begin(), kept_.end(),
                              [&](const Decoded& one) { return one.resource == picture.resource; });
  if (decoded == kept_.end()) decoded = kept_.insert(kept_.end(), decode(picture));
  scaleImage({decoded->pixels.data(), decoded->width, decoded->height, decoded->width}, target);
  if (!keeping_) kept_.clear();
}

void Pictures::keepDecoded(bool keep) {
  keeping_ = keep;
  if (!keep) kept_.clear();
}

Pictures::Decoded Pictures::decode(const PictureRef& picture) const {
  auto file = resources_.custom(picture.resource);
  if (!file) throw PictureError(picture.resource, "it is missing");
  try {
    const auto image = openImage(*file);
    UINT width = 0;
    UINT height = 0;
    requireSuccess(image->GetSize(&width, &height), "GetSize");
    if (width == 0 || height == 0 || width > kLargestSide || height > kLargestSide) {
      throw PictureError(picture.resource, "its size is wrong");
    }
    Decoded decoded{picture.resource, static_cast<int>(width), static_cast<int>(height), {}};
    decoded.pixels.resize(std::size_t{width} * height);
    const UINT stride = width * static_cast<UINT>(sizeof(std::uint32_t));
    requireSuccess(
        image->CopyPixels(nullptr, stride, stride * height, reinterpret_cast<BYTE*>(decoded.pixels.data())),
        "CopyPixels");
    return decoded;
  } catch (const Error& error) {
    throw PictureError(picture.resource, error.what());
  }
}

}  // namespace fiar::win32
