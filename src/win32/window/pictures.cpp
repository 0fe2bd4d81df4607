#include "win32/window/pictures.h"

#include <utility>

#include "win32/error.h"
// After <windows.h>, whose types they use.
#include <olectl.h>
#include <shlwapi.h>

namespace fiar::win32 {
namespace {

constexpr TextView kSmallCopy = u"SMALL";
constexpr TextView kMissing = u"it is missing";

void stretch(HBITMAP bitmap, PixelSize size, const PixelBuffer& target) {
  const DeviceContext source(require(CreateCompatibleDC(nullptr), "CreateCompatibleDC"));
  const SelectedObject selected(source.get(), bitmap);
  SetStretchBltMode(target.context(), HALFTONE);
  SetBrushOrgEx(target.context(), 0, 0, nullptr);  // the mode asks for it
  StretchBlt(target.context(), 0, 0, target.size().width, target.size().height, source.get(), 0, 0,
             size.width, size.height, SRCCOPY);
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

void Pictures::show(const PictureRef& picture, const PixelBuffer& target) {
  const PixelSize size = target.size();
  Decoded* image = decoded(Text(picture.resource).append(kSmallCopy));
  if (image == nullptr || image->size.width < size.width || image->size.height < size.height) {
    image = decoded(picture.resource);
    if (image == nullptr) throw PictureError(picture.resource, kMissing);
  }
  stretch(image->bitmap, image->size, target);
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
  auto found = decode(resource);
  return found ? &kept_.emplace_back(std::move(*found)) : nullptr;
}

std::optional<Pictures::Decoded> Pictures::decode(TextView resource) const {
  const auto file = resources_.custom(resource);
  if (!file) return std::nullopt;
  const auto size = static_cast<UINT>(file->size());
  const ComPointer<IStream> stream(SHCreateMemStream(reinterpret_cast<const BYTE*>(file->data()), size));
  IPicture* loaded = nullptr;
  const HRESULT result = OleLoadPicture(stream.get(), static_cast<LONG>(size), FALSE, IID_IPicture,
                                        reinterpret_cast<void**>(&loaded));
  if (FAILED(result)) throw PictureError(resource, errorText(static_cast<DWORD>(result)));
  ComPointer<IPicture> picture(loaded);
  OLE_HANDLE handle = 0;
  BITMAP description{};
  picture->get_Handle(&handle);
  const auto bitmap = static_cast<HBITMAP>(LongToHandle(static_cast<LONG>(handle)));
  if (GetObjectW(bitmap, sizeof(description), &description) == 0) {
    throw PictureError(resource, u"it is no bitmap");
  }
  return Decoded{Text(resource), std::move(picture), bitmap, {description.bmWidth, description.bmHeight}};
}

}  // namespace fiar::win32
