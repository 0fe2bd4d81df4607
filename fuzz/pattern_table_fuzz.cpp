// Loads pattern tables of any kind. Input: the bytes of the table.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "opponent/pattern_table.h"
#include "support/fake_platform.h"
#include "toolkit/toolkit.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fiar::test::FakePlatform machine;
  fiar::Toolkit toolkit(machine.platform);
  try {
    fiar::loadPatternTable({reinterpret_cast<const char*>(data), size}, toolkit);
  } catch (const fiar::PatternTableError&) {
    // The way to refuse a table; the weights before the bad line are in the store.
  }
  for (int n = 0; n < fiar::kPatternCount; ++n) {
    const fiar::Text weight = toolkit.variables().getVar(fiar::patternKey(n));
    if (!weight.empty() && !machine.regional.number(weight)) std::abort();
  }
  return 0;
}
