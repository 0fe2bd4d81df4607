#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <regex>
#include <string>
#include <system_error>

#include "platform/platform.h"

namespace fiar::test {

/// All bytes of a file; empty if it is missing.
inline std::string contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The program's resources, read from the files that its resource script names.
class FileResources final : public Resources {
public:
  std::map<unsigned, std::optional<std::string>> replaced;  ///< what the test puts in the place of some

  std::optional<std::string> custom(unsigned number) const override {
    const auto found = replaced.find(number);
    return found == replaced.end() ? find(std::to_string(number)) : found->second;
  }
  std::optional<std::string> custom(TextView name) const override { return find({name.begin(), name.end()}); }

private:
  static std::optional<std::string> find(const std::string& name) {
    const std::filesystem::path folder(FIAR_RESOURCE_DIR);
    const std::string script = contents(folder / "FiveInARow.rc");
    std::smatch entry;
    if (!std::regex_search(script, entry, std::regex("\n" + name + " CUSTOM \"([^\"]*)")))
      return std::nullopt;
    return contents(folder / entry[1].str());
  }
};

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
  std::string contents(TextView name) const { return test::contents(path_ / name); }

private:
  std::filesystem::path path_ =
      std::filesystem::temp_directory_path() / ("five-in-a-row." + std::to_string(std::random_device()()));
};

}  // namespace fiar::test
