// What the toolkit's classes cost, and how that grows with what they are given.

#include <benchmark/benchmark.h>

#include <string>

#include "support/fake_platform.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorXml.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

Text numbered(TextView name, std::int64_t number) {
  Text text(name);
  for (const char digit : std::to_string(number)) text += static_cast<char16_t>(digit);
  return text;
}

struct FilledStore {
  test::FakePlatform machine;
  VariableStore store{machine.platform};

  explicit FilledStore(std::int64_t entries) {
    for (std::int64_t i = 0; i < entries; ++i) store.setVar(numbered(u"variable", i), u"some value");
  }
};

void getVar(benchmark::State& state) {
  const FilledStore filled(state.range(0));
  const Text name = numbered(u"VARIABLE", state.range(0) / 2);
  for (auto step : state) benchmark::DoNotOptimize(filled.store.getVar(name));
}
BENCHMARK(getVar)->ArgName("entries")->Arg(100)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kNanosecond);

void setVar(benchmark::State& state) {
  FilledStore filled(state.range(0));
  const Text name = numbered(u"VARIABLE", state.range(0) / 2);
  for (auto step : state) filled.store.setVar(name, u"another value");
}
BENCHMARK(setVar)->ArgName("entries")->Arg(100)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kNanosecond);

void settingFromTheConfiguration(benchmark::State& state) {
  test::FakePlatform machine;
  machine.resources.loadRealOnes = true;
  const Text text = machine.codePage.decode(machine.resources.custom(101).value());
  clsZantorXml reader;
  Text attributes;
  for (auto step : state) benchmark::DoNotOptimize(reader.getTag(text, u"runMySQL", attributes, u"", u""));
}
BENCHMARK(settingFromTheConfiguration)->Unit(benchmark::kMicrosecond);

/// Elements of one name, each in the one before it, and the wanted one behind them.
void getTagBehindNestedOnes(benchmark::State& state) {
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
BENCHMARK(getTagBehindNestedOnes)->ArgName("KB")->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void enCodeLight(benchmark::State& state) {
  test::FakePlatform machine;
  Toolkit toolkit(machine.platform);
  const Text text(static_cast<std::size_t>(state.range(0)) * 1024, u'x');
  for (auto step : state) benchmark::DoNotOptimize(toolkit.codeCod().EnCodeLight(text, u"key", false));
}
BENCHMARK(enCodeLight)->ArgName("KB")->Arg(1)->Arg(32)->Arg(1024)->Unit(benchmark::kMicrosecond);

void encodingAnAttachment(benchmark::State& state) {
  const std::string bytes(static_cast<std::size_t>(state.range(0)) * 1024, '\xA5');
  for (auto step : state) benchmark::DoNotOptimize(clsZantorBas::brokenIntoLines(clsZantorBas::base64(bytes), 76));
}
BENCHMARK(encodingAnAttachment)->ArgName("KB")->Arg(32)->Arg(1024)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace fiar
