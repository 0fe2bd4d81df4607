#pragma once

#include <algorithm>
#include <array>

#include "platform/code_page.h"

namespace fiar::test {

/// Windows-1252, in which "?" stands for every character that it lacks. The five bytes that it leaves
/// undefined stand for the control codes of the same number, as Windows has it.
inline CodePage windows1252() {
  // The bytes from 0x80 on that differ from Latin-1.
  constexpr std::array<char16_t, 32> kFrom80{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  CodePage::Characters characters{};
  for (std::size_t byte = 0; byte < characters.size(); ++byte) characters[byte] = static_cast<char16_t>(byte);
  std::copy(kFrom80.begin(), kFrom80.end(), characters.begin() + 0x80);
  CodePage::Bytes lacking{};
  lacking.fill('?');
  return {characters, lacking};
}

}  // namespace fiar::test
