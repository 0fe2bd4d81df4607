// How the toolkit's costs grow with what it is given.

#include <benchmark/benchmark.h>

#include <string>

#include "support/fake_platform.h"
#include "toolkit/clsZantorXml.h"
#include "toolkit/variable_store.h"

namespace fiar {
namespace {

Text numbered(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return u"variable" + Text(digits.begin(), digits.end());
}

void setAndGetVar(benchmark::State& state) {
  test::FakePlatform machine;
  VariableStore store(machine.platform);
  for (std::int64_t i = 0; i < state.range(0); ++i) store.setVar(numbered(i), u"some value");
  const Text name = numbered(state.range(0) / 2);
  for (auto step : state) {
    store.setVar(name, u"another value");
    benchmark::DoNotOptimize(store.getVar(name));
  }
}
BENCHMARK(setAndGetVar)->ArgName("entries")->Arg(1'000)->Arg(100'000);

/// Elements of one name, each in the one before it, and the wanted one after them.
void getTagAfterNestedOnes(benchmark::State& state) {
  const TextView open = u"<item>";
  const TextView close = u"</item>";
  Text text;
  const auto depth = static_cast<std::size_t>(state.range(0)) * 1024 / (open.size() + close.size());
  for (std::size_t i = 0; i < depth; ++i) text += open;
  for (std::size_t i = 0; i < depth; ++i) text += close;
  text += u"<item>wanted</item>";
  clsZantorXml reader;
  Text attributes;
  for (auto step : state) {
    const Text found = reader.getTag(text, u"item[2]", attributes, u"", u"");
    if (found != u"wanted") state.SkipWithError("the element was not found");
  }
}
BENCHMARK(getTagAfterNestedOnes)->ArgName("KB")->Arg(10)->Arg(1000);

}  // namespace
}  // namespace fiar
