#include "toolkit/variable_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "support/allocation_count.h"
#include "support/fake_platform.h"

namespace fiar {
namespace {

class Variables : public testing::Test {
protected:
  test::FakePlatform machine;
  VariableStore store{machine.platform};
};

TEST_F(Variables, StartWithTheBuiltInOnes) {
  store.initBuiltInVars();
  machine.clock.date.year = 2027;
  using Case = std::pair<TextView, TextView>;
  for (const auto& [name, value] :
       {Case{u"_EmptyDate", u"30.12.1899 00:00:00"}, Case{u"_tab", u"\x09"}, Case{u"_cr", u"\x0D"},
        Case{u"_lf", u"\x0A"}, Case{u"_crlf", u"\x0D\x0A"}, Case{u"_nullChr", TextView(u"\0", 1)},
        Case{u"_back", u"\x08"}, Case{u"_ff", u"\x0C"}, Case{u"_vtab", u"\x0B"},
        Case{u"_now", u"14.03.2026 12:00:00"}, Case{u"err.number", u"0"}, Case{u"err.description", u""}}) {
    ASSERT_NE(store.findVar(name), nullptr) << toUtf8(name);
    EXPECT_EQ(store.getVar(name), value) << toUtf8(name);
  }
}

TEST_F(Variables, RefuseToChangeAConstant) {
  store.initBuiltInVars();
  store.setVar(u"_mine", u"first");
  EXPECT_EQ(store.getVar(u"_mine"), u"first");
  EXPECT_EQ(store.getVar(u"err.number"), u"0");
  for (const TextView name : {u"_MINE", u"_tab"}) {
    store.setVar(u"err.number", u"0");
    const Text before = store.getVar(name);
    store.setVar(name, u"x");
    EXPECT_EQ(store.getVar(name), before);
    EXPECT_EQ(store.getVar(u"err.number"), u"100001");
    EXPECT_EQ(store.getVar(u"err.description"), u"Assignment to constant not permitted");
  }
}

TEST_F(Variables, AreFoundInAnyLetterCase) {
  store.setVar(u"Err.\u010Cas.\u0436", u"1");
  EXPECT_EQ(store.getVar(u"ERR.\u010DAS.\u0416"), u"1");
  store.setVar(u"err.\u010Das.\u0416", u"2");
  EXPECT_EQ(store.getVar(u"Err.\u010Cas.\u0436"), u"2");
  // Neither a letter of another script, nor one without its accent, nor a NUL makes a name the same.
  for (const TextView other : {TextView(u"Err.Cas.\u0436"), TextView(u"Err.\u010Cas.\u0436\0", 10),
                               TextView(u"Err.\u010Ca\u017F.\u0436")}) {
    EXPECT_EQ(store.findVar(other), nullptr) << toUtf8(other);
  }
}

TEST_F(Variables, AbsentOnesAreEmptyAndNoError) {
  store.initBuiltInVars();
  EXPECT_EQ(store.getVar(u"never set"), u"");
  EXPECT_EQ(store.getVar(u""), u"");
  const std::size_t before = test::allocationCount();
  EXPECT_EQ(store.findVar(u"a name that was never set and is long"), nullptr);
  EXPECT_EQ(store.findVar(u"ERR.description")->size(), 0U);
  EXPECT_EQ(test::allocationCount(), before);
  EXPECT_EQ(store.getVar(u"err.number"), u"0");
}

TEST_F(Variables, KeepNumbersAndDatesAsRegionalText) {
  machine.regional.separator = u',';
  store.setVar(u"number", 2.5);
  store.setVar(u"whole", 5004492);
  store.setVar(u"date", DateTime{2024, 2, 29, 23, 59, 58});
  EXPECT_EQ(store.getVar(u"number"), u"2,5");
  EXPECT_EQ(store.getVar(u"whole"), u"5004492");
  EXPECT_EQ(store.getVar(u"date"), u"29.02.2024 23:59:58");
}

TEST_F(Variables, CanBeSetFromTheirOwnText) {
  const Text value = u"a value that is too long for the text object itself";
  store.setVar(u"name", value);
  store.setVar(*store.findVar(u"name"), u"other");
  store.setVar(value, *store.findVar(u"name") + *store.findVar(value));
  EXPECT_EQ(store.getVar(value), value + u"other");
}

TEST_F(Variables, StandInForTheEnvironment) {
  machine.environment.variables = {{u"TEMP", u"C:\\Temp"}, {u"EMPTY", u""}};
  store.setVar(u"env_TEMP", u"unused");
  store.setVar(u"ENV_empty", u"from the store");
  EXPECT_EQ(store.getEnvVar(u"TEMP"), u"C:\\Temp");
  EXPECT_EQ(store.getEnvVar(u"EMPTY"), u"from the store");
  EXPECT_EQ(store.getEnvVar(u"absent"), u"");
}

TEST_F(Variables, ChangeTheRevisionWithEveryStoredValue) {
  std::uint64_t last = store.revision();
  const auto changed = [&] { return std::exchange(last, store.revision()) != store.revision(); };
  // The last one is refused, but the error variables are entries too.
  for (const TextView name : {u"_constant", u"name", u"name", u"_constant"}) {
    store.setVar(name, 1);
    EXPECT_TRUE(changed()) << toUtf8(name);
  }
  EXPECT_EQ(store.getVar(u"name") + store.getVar(u"other"), u"1");
  EXPECT_FALSE(changed());
}

TEST_F(Variables, ListTheCommandWordsOfTheScriptEngine) {
  EXPECT_EQ(store.commandList(), u"");
  store.buildCommandList();
  store.buildCommandList();
  const Text& list = store.commandList();
  EXPECT_TRUE(list.starts_with(u":File;:Drive;:File.append;:File.savecontent;"));
  EXPECT_TRUE(list.ends_with(u":xml.getTag;:now;:sendSMS;:end;:Cache;"));
  EXPECT_EQ(std::count(list.begin(), list.end(), u':'), 80);
  EXPECT_EQ(list.size(), 765U);
}

}  // namespace
}  // namespace fiar
