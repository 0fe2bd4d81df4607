#include "toolkit/variable_store.h"

#include <gtest/gtest.h>

#include <algorithm>

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
  const std::pair<TextView, TextView> builtIn[] = {
      {u"_EmptyDate", u"30.12.1899 00:00:00"},
      {u"_tab", u"\x09"},
      {u"_cr", u"\x0D"},
      {u"_lf", u"\x0A"},
      {u"_crlf", u"\x0D\x0A"},
      {u"_nullChr", TextView(u"\0", 1)},
      {u"_back", u"\x08"},
      {u"_ff", u"\x0C"},
      {u"_vtab", u"\x0B"},
      {u"_now", u"14.03.2026 12:00:00"},
      {u"err.number", u"0"},
      {u"err.description", u""},
  };
  for (const auto& [name, value] : builtIn) {
    ASSERT_NE(store.findVar(name), nullptr) << toUtf8(name);
    EXPECT_EQ(store.getVar(name), value) << toUtf8(name);
  }
  machine.clock.date.year = 2027;
  EXPECT_EQ(store.getVar(u"_now"), u"14.03.2026 12:00:00");
}

TEST_F(Variables, RefuseToChangeAConstant) {
  store.initBuiltInVars();
  store.setVar(u"_mine", u"first");
  EXPECT_EQ(store.getVar(u"_mine"), u"first");
  EXPECT_EQ(store.getVar(u"err.number"), u"0");
  for (const TextView name : {u"_MINE", u"_tab"}) {
    store.setVar(u"err.number", u"0");
    store.setVar(u"err.description", u"");
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
  EXPECT_EQ(store.findVar(u"never set"), nullptr);
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
  store.setVar(u"name", u"a value that is too long for the text object itself");
  store.setVar(*store.findVar(u"name"), u"other");
  store.setVar(u"name", *store.findVar(u"name") + u"!");
  EXPECT_EQ(store.getVar(u"a value that is too long for the text object itself"), u"other");
  EXPECT_EQ(store.getVar(u"name"), u"a value that is too long for the text object itself!");
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
  store.setVar(u"_constant", u"1");
  EXPECT_TRUE(changed());
  store.setVar(u"name", 1);
  EXPECT_TRUE(changed());
  store.setVar(u"name", 2);
  EXPECT_TRUE(changed());
  store.setVar(u"_constant", u"2");
  EXPECT_TRUE(changed()) << "the error variables are entries too";
  EXPECT_EQ(store.getVar(u"name") + store.getVar(u"other"), u"2");
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
