#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <stdexcept>
#include <tuple>

#include "support/loaded_toolkit.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorFile.h"
#include "toolkit/clsZantorXml.h"

namespace fiar {
namespace {

struct Case {
  const char* name;
  Text text;
  Text path;
  Text result;
  Text params = u"kept";
  Text defaultValue = u"default";
  Text notFoundValue = u"absent";
};

void expectTag(const Case& c) {
  Text params = u"kept";
  EXPECT_EQ(clsZantorXml().getTag(c.text, c.path, params, c.defaultValue, c.notFoundValue), c.result)
      << c.name;
  EXPECT_EQ(params, c.params) << c.name;
}

TEST(TagReader, ReadsElements) {
  const Text settings = u"<mysqlConnect>\r\n</mysqlConnect><cryptoPass> MQ7R </cryptoPass>";
  const Text list = u"<i>1</i><i a=\"2\">2</i>-<I>3</I>";
  const Text inList = u"<l x=\"y\"><i k=\"v\">  a </i><i> <l>b</l></i></l>";
  const Case cases[] = {
      {"spaces stay", settings, u"CRYPTOpass", u" MQ7R "},
      {"line ends stay", settings, u"mysqlConnect", u"\r\n"},
      {"element like the absent one's value", u"<a>1</a>", u"a", u"<a>1</a>", u"", u"", u"<a>1</a>"},
      {"no path", u"<>x</>", u"", u"ERR: Wrong Key"},
      {"path without an end", u"<a b=\"1\">x</a>", u"a\\", u"ERR: Wrong Key", u"b=\"1\""},
      {"index too high", list + u"<i[1e999]>z</i[1e999]>", u"i[1e999]", u"absent", u""},
      {"index with decimals", list, u"i[2.9]", u"2", u"a=\"2\""},
      {"index with two signs", u"<i[+-2]>z</i[+-2]>", u"i[+-2]", u"z"},
      {"index too small", u"<i[1e-999]>z</i[1e-999]>", u"i[1e-999]", u"z"},
      {"index 0 is part of the name", u"<i[0]>z</i[0]><i>1</i>", u"i[0]", u"z"},
      {"attributes", u"<a x=\"1\" y>z</a>", u"a", u"z", u"x=\"1\" y"},
      {"a tab ends no name", u"<a\tx>z</a>", u"a", u"absent", u""},
      {"self-closing", u"<a x=\"1\"/>", u"a", u"default", u"x=\"1\""},
      {"self-closing without a space", u"<a/><a>1</a>", u"a", u"1"},
      {"self-closing inside itself", u"<a>1<a x/></a>", u"a", u"1<a x></a>"},
      {"self-closing, several slashes and a copy", u"<a x//><a x//>", u"a[2]", u"default", u"x"},
      {"self-closing again when a copy comes", u"<a x//><a x/>", u"a", u"default", u"x"},
      {"self-closing, shorter than before", u"<a x/     //><a x/     //>", u"a", u"default", u"x/"},
      {"self-closing further down stays", u"<a><b x/>y</b></a>", u"a\\b", u"y", u"x/"},
      {"same name inside, with attributes", u"<a p>1<A q>x</A>2</a><a>3</a>", u"a[2]", u"3"},
      {"two steps and an index", inList, u"l\\i[2]", u"<l>b</l>"},
      {"a step that is not inside", inList + u"<o>x</o>", u"l\\o", u"absent", u""},
      {"default values of steps are cut", u"<a><b></b></a>", u"a\\b", u"d", u"kept", u" d "},
      {"after an unclosed one of the same name", u"<a>1<a>2</a><a>3</a><a>4</a>", u"a[3]", u"3"},
      {"cut off in a tag", u"<a>1</a><a x", u"a[2]", u"default"},
      {"overlapping", u"<a>1<b>2</a>3</b>", u"b", u"2</a>3"},
  };
  for (const Case& c : cases) expectTag(c);
}

TEST(TagReader, KeepsTheLastElementCountsAndCuts) {
  clsZantorXml reader;
  Text params;
  reader.getTag(u"<l><i k=\"v\">1</i></l>", u"l\\i", params, u"", u"");
  EXPECT_EQ(reader.lastElement(), u"<i k=\"v\">1</i>");
  params = u"kept";
  EXPECT_EQ(reader.getTag(u"", u"o", params, u"", u""), u"");
  EXPECT_EQ(params, u"k=\"v\"");
  const auto between = clsZantorXml::getBetween;
  EXPECT_EQ(clsZantorXml::countOccurrences(u"", u"a", false), -1);
  EXPECT_EQ(clsZantorXml::countOccurrences(u"aAaxA", u"Aa", true), 1);
  EXPECT_EQ(between(u"xABxcabyCzc", u"ab", u"c", true, true), u"abyCzc");
  EXPECT_EQ(between(u"cab", u"ab", u"c", false, true), u"");
  EXPECT_EQ(between(u"((", u"((", u"(", false, false), u"");
}

Text repeated(TextView piece, int times) {
  Text text;
  for (int i = 0; i < times; ++i) text += piece;
  return text;
}

TEST(TagReader, TakesHugeMalformedText) {
  const Text deepest = repeated(u"<a>", 1001) + u"x" + repeated(u"</a>", 1001);
  const int many = 30'000;
  const Text manySteps = repeated(u"a\\", 500) + u"a";
  const Case cases[] = {
      {"a thousand closing tags inside", deepest, u"a", deepest.substr(3, deepest.size() - 7)},
      {"one more: given up at the pass before", u"<a>" + deepest + u"</a>", u"a", deepest},
      {"only <", repeated(u"<", 1'000'000), u"a", u"absent", u""},
      {"open tags", repeated(u"<a>", many), u"a[30000]", u"default"},
      {"closing tags", u"<a>1</a>" + repeated(u"</a>", many), u"a[2]", u"absent", u""},
      {"deep", repeated(u"<a>", many) + repeated(u"</a>", many), u"a[2]", u"absent", u""},
      {"self-closing", repeated(u"<a x/>", many), u"a[30000]", u"default", u"x"},
      {"long path", repeated(u"<a>", 501) + u"x" + repeated(u"</a>", 501), manySteps, u"x"},
  };
  for (const Case& c : cases) {
    expectTag(c);
    expectTag({c.name, u"<b>1</b>" + c.text, u"b", u"1"});
    expectTag({c.name, c.text + u"<b>1</b>", u"b", u"1"});
  }
}

struct ToolkitTest : testing::Test, test::FakeToolkit {
  clsZantorCodeCod& coder = toolkit.codeCod();
  VariableStore& store = toolkit.variables();
  test::FakeEvents& events = machine.events;
  test::TemporaryFolder folder;
  std::mt19937 random{20260314};

  Text randomText(std::size_t length) {
    Text text;
    while (text.size() < length) text += machine.codePage.character(static_cast<std::uint8_t>(random()));
    return text;
  }

  /// Returns how many pauses it took, each of a tenth of a second.
  std::size_t append(TextView path, TextView data, std::int16_t binaryMode) {
    events.waits.clear();
    toolkit.file().AppendToFile(path, data, binaryMode);
    for (const double wait : events.waits) EXPECT_EQ(wait, 0.1);
    return events.waits.size();
  }
};

TEST_F(ToolkitTest, CodesTheSameTextInEveryVersion) {
  const Text setting = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  const Text longText = randomText(5000);
  // Text, key and the end of the hexadecimal digits; every one depends on all of the text before it.
  const std::tuple<Text, Text, Text> cases[] = {
      {u"", setting, u""},
      {u"kqv5830tyemxwu71", u"", u"890BA76BB3FF41DA4DD356E99A4CBF8B"},
      {setting, u"sixteen letters!", u"25334F6F787C8F97C3BDCACAE8F1E3ED"},
      {setting, longText, u"F577670B9E1E15B1119B2AC6C045CF5D"},
      {longText, setting, u"31BDE77C4E4018C7AE1946014FE4FC07"},
      {u"\u0160krjan\u010Dek \u4E00", u"k", u"6A32F23B0ECFC088C96605"},
  };
  for (const auto& [text, key, end] : cases) {
    const Text coded = coder.EnCodeLight(text, key, true);
    EXPECT_EQ(coded.size(), 2 * text.size());
    EXPECT_TRUE(coded.ends_with(end)) << testing::PrintToString(coded);
  }
  EXPECT_TRUE(toolkit.bas().StrCheckSum2(longText, 31, true).ends_with(u"57E2C0ABF638F447EFF95125B0A85C7F"));
  EXPECT_EQ(toolkit.bas().StrCheckSum2(u"a", 0, true), u"");
  EXPECT_EQ(clsZantorBas::MesajText(u"123"), u"23$1");
}

TEST_F(ToolkitTest, TakesBackWhatItCoded) {
  for (const std::size_t keyLength : {0U, 1U, 15U, 16U, 300U}) {
    const Text text = randomText(257);
    const Text key = randomText(keyLength);
    for (const bool hex : {false, true}) {
      EXPECT_EQ(coder.DeCodeLight(coder.EnCodeLight(text, key, hex), key, hex), text) << keyLength;
    }
  }
  for (const TextView input : {u"ABC", u"0G", u"G0"}) EXPECT_EQ(coder.DeCodeLight(input, u"", true), u"");
}

TEST_F(ToolkitTest, StartsWithTheBuiltInVariables) {
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
  EXPECT_EQ(store.getVar(u""), u"");
  EXPECT_EQ(store.getVar(u"err.number"), u"0");
}

TEST_F(ToolkitTest, FindsVariablesInAnyLetterCaseAndChangesThemUnlessConstant) {
  store.setVar(u"Err.\u010Cas", u"1");
  EXPECT_EQ(store.getVar(u"ERR.\u010DAS"), u"1");
  store.setVar(u"err.\u010Das", u"2");
  EXPECT_EQ(store.getVar(u"Err.\u010Cas"), u"2");
  store.setVar(u"_mine", u"first");
  EXPECT_EQ(store.findVar(u"err.number"), nullptr);
  store.setVar(u"_MINE", u"x");
  EXPECT_EQ(store.getVar(u"_mine"), u"first");
  EXPECT_EQ(store.getVar(u"err.number"), u"100001");
  EXPECT_EQ(store.getVar(u"err.description"), u"Assignment to constant not permitted");
}

TEST_F(ToolkitTest, KeepsNumbersAndDatesAsRegionalTextAndStandsInForTheEnvironment) {
  machine.regional.separator = u',';
  store.setVar(u"number", 2.5);
  store.setVar(u"env_DATE", DateTime{2024, 2, 29, 23, 59, 58});
  store.setVar(u"env_TEMP", u"unused");
  machine.environment.variables = {{u"TEMP", u"C:\\Temp"}};
  EXPECT_EQ(store.getVar(u"number"), u"2,5");
  EXPECT_EQ(store.getEnvVar(u"date"), u"29.02.2024 23:59:58");
  EXPECT_EQ(store.getEnvVar(u"TEMP"), u"C:\\Temp");
}

TEST_F(ToolkitTest, ListsTheCommandWordsOfTheScriptEngineOnce) {
  for (int i = 0; i < 2; ++i) store.buildCommandList();
  EXPECT_TRUE(store.commandList().starts_with(u":File;:Drive;:File.append;:File.savecontent;"));
  EXPECT_TRUE(store.commandList().ends_with(u":xml.getTag;:now;:sendSMS;:end;:Cache;"));
  EXPECT_EQ(store.commandList().size(), 765U);
}

TEST_F(ToolkitTest, KnowsYesInBothLanguagesAndTakesTheRestForNo) {
  for (const TextView yes :
       {u"Da", u"yEs", u"1", u"true", u"-1", u"On", u"vklop", u"VKLOPLJEN", u"vklopljeno"}) {
    EXPECT_TRUE(clsZantorBas::GetTF(yes)) << testing::PrintToString(yes);
  }
  for (const TextView no : {u"NE", u"0", u"off", u"", u" yes", u"yes ", u"2"}) {
    EXPECT_FALSE(clsZantorBas::GetTF(no)) << testing::PrintToString(no);
  }
}

TEST_F(ToolkitTest, WritesBinaryDigitsInGroupsOfEight) {
  const auto dec2bin = clsZantorBas::dec2bin;
  EXPECT_EQ(dec2bin(0, false), u"0");
  EXPECT_EQ(dec2bin(5.50004, false), u"110");
  EXPECT_EQ(dec2bin(4.50004, true), u"00000100");
  EXPECT_EQ(dec2bin(2147483647.4999, true), u"01111111111111111111111111111111");
  EXPECT_EQ(dec2bin(-5, true), u"000-10-1");
  for (const double bad : {2147483647.5, -2147483648.5001, 1e300, std::nan("")}) {
    EXPECT_THROW(dec2bin(bad, true), std::overflow_error) << bad;
  }
}

TEST_F(ToolkitTest, MakesTextsThatDifferByChanceAndByTime) {
  const Text first = toolkit.bas().uniqueText(30);
  EXPECT_EQ(first.size(), 30U);
  machine.clock.advance(0.001);
  const Text later = toolkit.bas().uniqueText(30);
  EXPECT_NE(later, first);
  machine.random.afterwards = 1 - 0x1p-53;
  EXPECT_NE(toolkit.bas().uniqueText(30), later);
}

TEST_F(ToolkitTest, DelaysForTheWholeTimeWhateverTheClockDoes) {
  for (const double none : {0.0, -1.0, std::nan("")}) toolkit.bas().DelayEvents(none);
  EXPECT_EQ(events.processed, 3) << "events are delivered at least once";
  EXPECT_TRUE(events.waits.empty());
  machine.clock.seconds = 86399.96;
  toolkit.bas().DelayEvents(0.1);
  EXPECT_NEAR(machine.clock.seconds, 0.06, 1e-6);
  // It is set back once, then it stands still but for every tenth look.
  machine.clock.seconds = 40000;
  events.longestWait = 0;
  events.processed = 0;
  events.onEvents = [this] {
    if (events.processed == 5) machine.clock.seconds -= 7200;
    if (events.processed % 10 == 0) machine.clock.advance(0.0625);
  };
  toolkit.bas().DelayEvents(0.1);
  EXPECT_EQ(events.processed, 20);
}

TEST_F(ToolkitTest, AppendsLinesAndBytes) {
  const Text file = folder.text() + u"\u017Eiga.txt";
  for (const TextView line : {u"first", u"", u"a\nb"}) EXPECT_EQ(append(file, line, 0), 0U);
  append(file, u"\u20AC\u017E", -1);
  append(file, TextView(u"\0\n\u4E2D", 3), 1);
  EXPECT_EQ(folder.contents(u"\u017Eiga.txt"), std::string("first\r\n\r\na\nb\r\n\x80\x9E\0\n?", 19));
}

TEST_F(ToolkitTest, AppendsOnceTheFileCanBeOpenedAndGivesUpAfterFiveFailures) {
  // Each failing step costs a pause: the opening all five, every step after it one more.
  const Text late = folder.text() + u"late/lines.txt";
  EXPECT_EQ(append(late, u"lost", 0), 6U);
  EXPECT_EQ(append(late, u"lost", 1), 7U);
  events.onEvents = [this] {
    if (events.waits.size() == 4) std::filesystem::create_directory(folder.path() / "late");
  };
  EXPECT_EQ(append(late, u"saved", 0), 4U);
  EXPECT_EQ(folder.contents(u"late/lines.txt"), "saved\r\n");
}

}  // namespace
}  // namespace fiar
