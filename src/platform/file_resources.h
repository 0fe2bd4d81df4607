#pragma once

#include <filesystem>

#include "platform/platform.h"

namespace fiar {

/// The program's resources read from the files that they are made from, where there is no executable to hold
/// them.
class FileResources final : public Resources {
public:
  /// \param folder the folder with the files; one that is missing has no resources.
  explicit FileResources(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::optional<std::string> custom(unsigned number) const override;
  std::optional<std::string> custom(TextView name) const override;

private:
  std::filesystem::path folder_;
};

}  // namespace fiar
