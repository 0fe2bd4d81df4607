#include "win32/window/pictures.h"

#include <algorithm>
#include <utility>

#include "win32/window/com.h"
// After <windows.h>, whose types it uses.
#include <wincodec.h>

namespace fiar::win32 {
namespace {

// Larger ones are damaged: no picture of the program comes near it.
constexpr UINT kLargestSide = 16384;
constexpr TextView kMissing = u"it is missing";

Text smallCopyOf(const PictureRef& picture) {
  return Text(picture.resource).append(u"SMALL");
}

/// \param file outlives what is returned.
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

}  // namespace

PictureError::PictureError(TextView resource, TextView reason)
    : fiar::Error(Text(u"The picture \"")
                      .append(resource)
                      .append(u"\" in the program cannot be shown: ")
                      .append(reason)) {}

void Pictures::check(const PictureRef& picture) const {
  if (!decode(picture.resource)) throw PictureError(picture.resource, kMissing);
}

void Pictures::prepare(const PictureRef& picture) {
  prepared_ = smallCopyOf(picture);
  preparation_ = std::async(std::launch::async, [this] {
    const ComApartment apartment;
    return decode(prepared_);
  });
}

void Pictures::show(const PictureRef& picture, const PixelBuffer& target) {
  const PixelSize size = target.size();
  Decoded* image = decoded(smallCopyOf(picture));
  if (image == nullptr || image->width < size.width || image->height < size.height) {
    image = decoded(picture.resource);
    if (image == nullptr) throw PictureError(picture.resource, kMissing);
  }
  SetStretchBltMode(target.context(), HALFTONE);
  SetBrushOrgEx(target.context(), 0, 0, nullptr);  // the mode asks for it
  const BITMAPINFO description = describePixels({image->width, image->height});
  StretchDIBits(target.context(), 0, 0, size.width, size.height, 0, 0, image->width, image->height,
                image->pixels.data(), &description, DIB_RGB_COLORS, SRCCOPY);
  if (!keeping_) kept_.clear();
}

void Pictures::keepDecoded(bool keep) {
  keeping_ = keep;
  if (!keep) kept_.clear();
}

Pictures::Decoded* Pictures::decoded(TextView resource) {
  for (Decoded& one : kept_) {
    if (one.resource == resource) return &one;
  }
  auto found = preparation_.valid() && resource == prepared_ ? preparation_.get() : decode(resource);
  return found ? &kept_.emplace_back(std::move(*found)) : nullptr;
}

std::optional<Pictures::Decoded> Pictures::decode(TextView resource) const {
  auto file = resources_.custom(resource);
  if (!file) return std::nullopt;
  try {
    const auto frame = openFirstFrame(*file);
    UINT width = 0;
    UINT height = 0;
    requireSuccess(frame->GetSize(&width, &height), "GetSize");
    if (width == 0 || height == 0 || width > kLargestSide || height > kLargestSide) {
      throw PictureError(resource, u"its size is wrong");
    }
    std::vector<std::uint32_t> pixels(std::size_t{width} * height);
    const auto bytes = static_cast<UINT>(pixels.size() * sizeof(std::uint32_t));
    requireSuccess(frame->CopyPixels(nullptr, bytes / height, bytes, reinterpret_cast<BYTE*>(pixels.data())),
                   "CopyPixels");
    return Decoded{Text(resource), static_cast<int>(width), static_cast<int>(height), std::move(pixels)};
  } catch (const Error& error) {
    throw PictureError(resource, error.message());
  }
}

}  // namespace fiar::win32
