#pragma once

#include <cstdint>
#include <string>

#include "platform/text.h"

namespace fiar {

class Toolkit;

/// File helpers of the toolkit.
class clsZantorFile {
public:
  /// \param toolkit the toolkit that this is an instance of; outlives it.
  explicit clsZantorFile(Toolkit& toolkit) : toolkit_(toolkit) {}

  /// Adds data at the end of a file, which is created where it does not exist; folders are not. Characters
  /// become bytes of the ANSI code page. With `binaryMode` 0 the data is followed by CR LF, otherwise nothing
  /// is added. Never reports an error: a step that fails (open, go to the end, write) is repeated after a
  /// tenth of a second, in which window events are delivered; from the fifth failure of the call on, failing
  /// steps are skipped, and the data may be lost.
  void AppendToFile(TextView fileName, TextView data, std::int16_t binaryMode);

  /// All bytes of a file; none if it cannot be read or is not a plain file. May throw std::bad_alloc only.
  static std::string fileContent(TextView path);

  /// The part of a path after its last "\", "/" or drive letter's ":"; the whole path where it has none.
  static TextView fileNamePart(TextView path);

private:
  Toolkit& toolkit_;
};

}  // namespace fiar
