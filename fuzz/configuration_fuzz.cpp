// Starts the program with configurations of any kind. Input: the bytes of the configuration.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "app/startUpMod.h"
#include "support/fake_platform.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fiar::test::FakePlatform machine;
  machine.resources.numbered[101].assign(data, data + size);
  fiar::Toolkit toolkit(machine.platform);
  fiar::startUpMod::ProgramValues values;
  int shown = 0;
  fiar::startUpMod::Main(toolkit, values, [&] { ++shown; });

  const auto isDigit = [](char16_t c) { return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F'); };
  const bool hasKey = !values.workKey.empty() && values.workKey.size() % 2 == 0 &&
                      std::all_of(values.workKey.begin(), values.workKey.end(), isDigit);
  const std::size_t connections = values.useDatabase ? 1 : 0;
  if (shown != 1 || !hasKey || values.configText.size() != size ||
      machine.database.connectTexts.size() != connections) {
    std::abort();
  }
  return 0;
}
