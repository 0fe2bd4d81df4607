#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

#include "platform/platform.h"

namespace fiar::test {

/// All bytes of a file; empty if it is missing.
inline std::string contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// One of the files that the program's resources are made from.
inline std::string resourceFile(const char* name) {
  return contents(std::filesystem::path(FIAR_RESOURCE_DIR) / name);
}

/// A new, empty folder that goes with everything in it in the end.
struct TemporaryFolder {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("five-in-a-row." + std::to_string(std::random_device()()));

  TemporaryFolder() { std::filesystem::create_directory(path); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }

  /// The folder as the program names folders, with a "\" at its end.
  Text text() const { return path.u16string() + u'\\'; }
  std::string contents(TextView name) const { return test::contents(path / name); }
};

}  // namespace fiar::test
