// What the portable code asks of its host, where that is not Windows.

#include <algorithm>
#include <cwctype>
#include <filesystem>

#include "platform/files.h"

namespace fiar {
namespace {

std::filesystem::path nativePath(Text path) {
  std::replace(path.begin(), path.end(), u'\\', u'/');
  return path;
}

}  // namespace

void makeUpperByHost(std::span<char16_t> characters) {
  // The language-neutral locale with the full character set; for the life of the process.
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  for (char16_t& character : characters) {
    const wint_t upper = towupper_l(character, locale);
    // A capital letter that takes two code units is no one-to-one mapping.
    if (upper <= 0xFFFF) character = static_cast<char16_t>(upper);
  }
}

OpenFile openToAppend(TextView path) {
  return OpenFile(std::fopen(nativePath(Text(path)).c_str(), "ab"));
}

OpenFile openToRead(TextView path) {
  const std::filesystem::path native = nativePath(Text(path));
  if (!std::filesystem::is_regular_file(native)) return nullptr;
  return OpenFile(std::fopen(native.c_str(), "rb"));
}

}  // namespace fiar
