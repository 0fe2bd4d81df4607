#pragma once

#include <list>
#include <optional>

#include "forms/controls.h"
#include "platform/error.h"
#include "platform/platform.h"
#include "win32/window/com.h"
#include "win32/window/pixel_buffer.h"
// After <windows.h>, whose types it uses.
#include <ocidl.h>

namespace fiar::win32 {

/// A picture of the program that is missing or damaged.
class PictureError : public fiar::Error {
public:
  PictureError(TextView resource, TextView reason);
};

/// The pictures in the program's resources, in a format that the system knows (JPEG, GIF, BMP). A decoded
/// picture is large and seldom needed, so it is not kept, but for the time in which sizes change again and
/// again. A picture may have a copy with fewer pixels, which costs less time: a resource of its name with
/// "SMALL" after it. The copy is shown where it is large enough.
class Pictures {
public:
  /// \param resources outlives this object.
  explicit Pictures(const Resources& resources) : resources_(resources) {}

  /// Draws a picture in the size of the target. Throws PictureError.
  void show(const PictureRef& picture, const PixelBuffer& target);
  /// Throws PictureError if the picture itself, whatever its copy, cannot be shown.
  void check(const PictureRef& picture) const;

  /// Whether decoded pictures are kept from now on; no longer keeping them frees their memory.
  void keepDecoded(bool keep);

private:
  struct Decoded {
    Text resource;
    ComPointer<IPicture> picture;  ///< owns the bitmap
    HBITMAP bitmap = nullptr;
    PixelSize size;
  };

  /// A decoded picture, which is kept for now; null where there is no such resource.
  Decoded* decoded(TextView resource);
  std::optional<Decoded> decode(TextView resource) const;

  const Resources& resources_;
  std::list<Decoded> kept_;
  bool keeping_ = false;
};

}  // namespace fiar::win32
