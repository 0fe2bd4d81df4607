#include "toolkit/variable_store.h"

#include <gtest/gtest.h>

#include "support/fake_platform.h"

namespace fiar {
namespace {

struct Variables : testing::Test {
  test::FakePlatform machine;
  VariableStore store{machine.platform};
};

TEST_F(Variables, StartWithTheBuiltInOnes) {
  store.initBuiltInVars();
  machine.clock.date.year = 2027;
  EXPECT_EQ(store.getVar(u"_now"), u"14.03.2026 12:00:00");
  EXPECT_EQ(store.getVar(u"_EmptyDate"), u"30.12.1899 00:00:00");
  Text characters;
  for (const TextView name : {u"_tab", u"_cr", u"_lf", u"_crlf", u"_nullChr", u"_back", u"_ff", u"_vtab"}) {
    characters += store.getVar(name);
  }
  EXPECT_EQ(characters, Text(u"\t\r\n\r\n\0\b\f\v", 9));
  EXPECT_NE(store.findVar(u"err.description"), nullptr);
  // One that is absent is empty, and asking for it is no error.
  EXPECT_EQ(store.findVar(u"absent"), nullptr);
  EXPECT_EQ(store.getVar(u""), u"");
  EXPECT_EQ(store.getVar(u"err.number"), u"0");
}

TEST_F(Variables, AreFoundInAnyLetterCaseAndChangedUnlessConstant) {
  store.setVar(u"Err.\u010Cas", u"1");
  EXPECT_EQ(store.getVar(u"ERR.\u010DAS"), u"1");
  store.setVar(u"err.\u010Das", u"2");
  EXPECT_EQ(store.getVar(u"Err.\u010Cas"), u"2");
  EXPECT_EQ(store.findVar(u"Err.Cas"), nullptr);
  store.setVar(u"_mine", u"first");
  EXPECT_EQ(store.findVar(u"err.number"), nullptr);
  store.setVar(u"_MINE", u"x");
  EXPECT_EQ(store.getVar(u"_mine"), u"first");
  EXPECT_EQ(store.getVar(u"err.number"), u"100001");
  EXPECT_EQ(store.getVar(u"err.description"), u"Assignment to constant not permitted");
}

TEST_F(Variables, KeepNumbersAndDatesAsRegionalTextAndStandInForTheEnvironment) {
  machine.regional.separator = u',';
  store.setVar(u"number", 2.5);
  store.setVar(u"date", DateTime{2024, 2, 29, 23, 59, 58});
  EXPECT_EQ(store.getVar(u"number"), u"2,5");
  EXPECT_EQ(store.getVar(u"date"), u"29.02.2024 23:59:58");
  machine.environment.variables = {{u"TEMP", u"C:\\Temp"}, {u"EMPTY", u""}};
  store.setVar(u"env_TEMP", u"unused");
  store.setVar(u"ENV_empty", u"from the store");
  EXPECT_EQ(store.getEnvVar(u"TEMP"), u"C:\\Temp");
  EXPECT_EQ(store.getEnvVar(u"EMPTY"), u"from the store");
}

TEST_F(Variables, ListTheCommandWordsOfTheScriptEngine) {
  store.buildCommandList();
  store.buildCommandList();
  EXPECT_TRUE(store.commandList().starts_with(u":File;:Drive;:File.append;:File.savecontent;"));
  EXPECT_TRUE(store.commandList().ends_with(u":xml.getTag;:now;:sendSMS;:end;:Cache;"));
  EXPECT_EQ(store.commandList().size(), 765U);
}

}  // namespace
}  // namespace fiar
