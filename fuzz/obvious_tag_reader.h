#pragma once

#include <optional>

#include "platform/text.h"

namespace fiar::fuzz {

/// The tag reader done in the obvious way, step after step and slowly: what clsZantorXml must agree with.
class ObviousTagReader {
public:
  /// As clsZantorXml::getTag(). Absent where text with unclosed elements leads to what the steps leave open:
  /// an element without room for a content, or the search for one more behind an unclosed one.
  std::optional<Text> getTag(Text text, const Text& tagPath, Text& tagParams, const Text& defaultValue,
                             const Text& notFoundValue);

  Text lastElement;

private:
  int callDepth_ = 0;
};

}  // namespace fiar::fuzz
