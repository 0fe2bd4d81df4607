#include <clocale>
#include <cwctype>
#include <system_error>

#include "platform/upper_case.h"

namespace fiar {
namespace {

// The language-neutral locale with the full character set; for the life of the process.
locale_t neutralLocale() {
  static const locale_t locale = [] {
    const locale_t made = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (made == nullptr) throw std::system_error(errno, std::generic_category(), "newlocale");
    return made;
  }();
  return locale;
}

}  // namespace

void makeUpperByHost(std::span<char16_t> characters) {
  const locale_t locale = neutralLocale();
  for (char16_t& character : characters) {
    const wint_t upper = towupper_l(character, locale);
    // A capital letter that takes two code units is no one-to-one mapping.
    if (upper <= 0xFFFF) character = static_cast<char16_t>(upper);
  }
}

}  // namespace fiar
