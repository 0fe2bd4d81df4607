#pragma once

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <string>

#include "platform/platform.h"

namespace fiar::test {

/// The program's resources, read from the files that its resource script names.
class FileResources final : public Resources {
public:
  std::optional<std::string> custom(unsigned number) const override { return find(std::to_string(number)); }
  std::optional<std::string> custom(TextView name) const override { return find({name.begin(), name.end()}); }

private:
  static std::optional<std::string> find(const std::string& wanted) {
    const std::filesystem::path folder(FIAR_RESOURCE_DIR);
    std::ifstream script(folder / "FiveInARow.rc");
    for (std::string line; std::getline(script, line);) {
      std::istringstream entry(line);
      std::string name;
      std::string type;
      std::string fileName;
      entry >> name >> type >> std::quoted(fileName);
      if (name != wanted || type != "CUSTOM") continue;
      std::ifstream file(folder / fileName, std::ios::binary);
      return std::string(std::istreambuf_iterator<char>(file), {});
    }
    return std::nullopt;
  }
};

}  // namespace fiar::test
