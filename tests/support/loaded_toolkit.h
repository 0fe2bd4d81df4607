#pragma once

#include "opponent/pattern_table.h"
#include "support/fake_platform.h"
#include "toolkit/toolkit.h"

namespace fiar::test {

/// A toolkit on a fake machine.
struct FakeToolkit {
  FakePlatform machine;
  Toolkit toolkit{machine.platform};
};

/// The same with the shipped pattern table in its store.
struct LoadedToolkit : FakeToolkit {
  LoadedToolkit() { loadPatternTable(machine.resources.custom(kPatternTableResource).value(), toolkit); }
};

}  // namespace fiar::test
