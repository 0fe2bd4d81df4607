#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

#include "platform/text.h"

namespace fiar::test {

/// A new, empty folder that goes with everything in it in the end.
class TemporaryFolder {
public:
  TemporaryFolder() { std::filesystem::create_directory(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  TemporaryFolder(TemporaryFolder&&) = delete;
  TemporaryFolder& operator=(TemporaryFolder&&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }
  /// The folder as the program names folders, with a "\" at its end.
  Text text() const { return path_.u16string() + u'\\'; }
  /// All bytes of a file in the folder; empty, with a failure of the test, where it is missing.
  std::string contents(TextView name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << testing::PrintToString(name);
    return {std::istreambuf_iterator<char>(file), {}};
  }

private:
  std::filesystem::path path_ =
      std::filesystem::temp_directory_path() / ("five-in-a-row." + std::to_string(std::random_device()()));
};

}  // namespace fiar::test
