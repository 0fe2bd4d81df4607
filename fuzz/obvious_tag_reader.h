#pragma once

#include <optional>

#include "platform/text.h"

namespace fiar::fuzz {

/// The tag reader done in the obvious way, step after step and slowly: what clsZantorXml must agree with.
class ObviousTagReader {
public:
  /// As clsZantorXml::getTag(). Absent for malformed text that clsZantorXml reads in a more sensible way than
  /// the steps would: an element without room for a content, and one more element after an unclosed one.
  std::optional<Text> getTag(Text text, const Text& tagPath, Text& tagParams, const Text& defaultValue,
                             const Text& notFoundValue);

  Text lastElement;

private:
  int callDepth_ = 0;
};

}  // namespace fiar::fuzz
