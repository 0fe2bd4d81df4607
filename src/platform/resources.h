#pragma once

#include <optional>
#include <string>

#include "platform/text.h"

namespace fiar {

/// The data embedded in the program, resource type "custom" (types and names ignore letter case).
class Resources {
public:
  virtual ~Resources() = default;

  /// All bytes of the resource with this number; absent when there is none.
  virtual std::optional<std::string> custom(unsigned number) const = 0;
  /// All bytes of the resource with this name; absent when there is none.
  virtual std::optional<std::string> custom(TextView name) const = 0;
};

}  // namespace fiar
