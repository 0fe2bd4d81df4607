#pragma once

#include "platform/platform.h"

namespace fiar::win32 {

/// The resources inside the program's own .exe.
class Win32Resources final : public Resources {
public:
  std::optional<std::string> custom(unsigned number) const override;
  std::optional<std::string> custom(TextView name) const override;
};

}  // namespace fiar::win32
