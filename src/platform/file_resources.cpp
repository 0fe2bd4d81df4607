#include "platform/file_resources.h"

#include <array>
#include <fstream>
#include <iterator>

namespace fiar {
namespace {

struct NumberedFile {
  unsigned number;
  const char* file;
};

struct NamedFile {
  TextView name;
  const char* file;
};

constexpr std::array kNumberedFiles{
    NumberedFile{101, "configuration.txt"},
    NumberedFile{102, "pattern_table.dat"},
};

constexpr std::array kNamedFiles{
    NamedFile{u"WAVTAP", "tap.wav"},
    NamedFile{u"WAVERR", "error.wav"},
    NamedFile{u"BACKGROUND", "background.jpg"},
    NamedFile{u"BACKGROUNDSMALL", "background_small.jpg"},
    NamedFile{u"PICTURE2", "picture2.gif"},
    NamedFile{u"PICTURE3", "picture3.gif"},
};

std::optional<std::string> contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

std::optional<std::string> FileResources::custom(unsigned number) const {
  for (const NumberedFile& entry : kNumberedFiles) {
    if (entry.number == number) return contents(folder_ / entry.file);
  }
  return std::nullopt;
}

std::optional<std::string> FileResources::custom(TextView name) const {
  for (const NamedFile& entry : kNamedFiles) {
    if (equalIgnoringCase(entry.name, name)) return contents(folder_ / entry.file);
  }
  return std::nullopt;
}

}  // namespace fiar
