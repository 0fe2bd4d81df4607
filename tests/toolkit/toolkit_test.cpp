#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <tuple>

#include "support/fake_platform.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorFile.h"
#include "toolkit/clsZantorXml.h"

namespace fiar {
namespace {

/// Does what clsZantorXml does, but in the obvious way: step after step, on a copy of the text.
struct ObviousTagReader {
  Text defaultValue;
  Text notFoundValue;
  Text params;
  Text lastElement;

  Text getTag(Text text, const Text& path, bool outermost = true) {
    if (path.empty()) return u"ERR: Wrong Key";
    const std::size_t separator = path.find(u'\\');
    Text name = path.substr(0, separator);
    const Text number = clsZantorXml::getBetween(name, u"[", u"]", false, false);
    const double index = std::strtod(std::string(number.begin(), number.end()).c_str(), nullptr);
    if (index != 0) name.resize(name.find(u'['));
    if (outermost) expandSelfClosing(text, name);
    Text result = findElement(text, name, index == 0 ? 1 : index);
    if (result != notFoundValue && !result.empty()) {
      const std::size_t begin = result.find(u'>') + 1;
      const std::size_t end = std::max(begin, result.rfind(u'<'));
      result = result.substr(begin, end - begin);
      if (separator != Text::npos) result = trimSpaces(getTag(result, path.substr(separator + 1), false));
    }
    if (result.empty()) result = defaultValue;
    if (!outermost) return result;
    const std::size_t space = lastElement.find(u' ');
    const std::size_t end = lastElement.find(u'>');
    if (space < end) params = lastElement.substr(space + 1, end - space - 1);
    if (!notFoundValue.empty() && result == notFoundValue) params.clear();
    return result;
  }

private:
  static std::size_t find(const Text& text, const Text& what, std::size_t from) {
    return toUpper(text).find(toUpper(what), from);
  }

  static std::size_t findOpening(const Text& text, const Text& name, std::size_t from) {
    return std::min(find(text, u"<" + name + u">", from), find(text, u"<" + name + u" ", from));
  }

  static void expandSelfClosing(Text& text, const Text& name) {
    const Text closing = u"></" + name + u">";
    std::size_t start = findOpening(text, name, 0);
    for (; start != Text::npos; start = findOpening(text, name, start + 1)) {
      const std::size_t end = text.find(u'>', start);
      if (end == Text::npos || text[end - 1] != u'/') continue;
      const Text element = text.substr(start, end - start + 1);
      const TextView inner = TextView(element).substr(1, element.size() - 3);
      text = replaced(text, element, Text(u"<").append(trimSpaces(inner)).append(closing));
    }
  }

  Text findElement(Text text, const Text& name, double n) {
    const Text closing = u"</" + name + u">";
    Text element;
    const auto count = [&](const Text& tag) { return clsZantorXml::countOccurrences(element, tag, false); };
    std::size_t from = 0;
    for (double i = 1; i <= n; ++i) {
      const std::size_t start = findOpening(text, name, from);
      if (start == Text::npos) return notFoundValue;
      // A closing tag that is not found counts as one that begins one character before the text.
      std::size_t close = find(text, closing, start + 1);
      std::size_t end = 0;
      bool balanced = false;
      do {
        end = close + closing.size();
        if (end > start) element = text.substr(start, end - start);
        balanced = count(u"<" + name + u" ") + count(u"<" + name + u">") == count(closing);
        close = find(text, closing, end);
      } while (!balanced && close != Text::npos);
      from = balanced ? 0 : start + 1;
      if (!balanced) continue;
      lastElement = trimSpaces(element);
      text.erase(0, end);
    }
    return element;
  }
};

TEST(TagReader, ReadsRandomTextsAsTheObviousWayDoes) {
  const TextView pieces[] = {u"<a>",     u"</a>",        u"<a x=\"1\">", u"<A ",  u"<a/>",   u"<a x/>",
                             u"<a x//>", u"<a x/   //>", u"<b>",         u"</b>", u"<b y/>", u"<",
                             u"x ",      u" ",           u"/",           u"/>",   u">"};
  const TextView paths[] = {u"a",       u"A[2]",   u"a[3]",     u"b\\a", u"a\\b", u"a[0]",
                            u"a[ 1.9]", u"a[+-2]", u"a[1e999]", u"a\\",  u""};
  const TextView values[] = {u"", u" ", u" d ", u"x", u"<a>x </a>"};
  const unsigned seed = 20260314;
  std::mt19937 random(seed);
  const auto any = [&](const auto& choices) { return Text(choices[random() % std::size(choices)]); };
  clsZantorXml reader;
  Text params;
  ObviousTagReader obvious;
  for (int i = 0; i < 5000; ++i) {
    Text text;
    for (auto left = random() % 16; left > 0; --left) text += any(pieces);
    const Text path = any(paths);
    obvious.defaultValue = any(values);
    obvious.notFoundValue = any(values);
    const Text expected = obvious.getTag(text, path);
    const Text result = reader.getTag(text, path, params, obvious.defaultValue, obvious.notFoundValue);
    ASSERT_EQ(std::tie(result, params, reader.lastElement()),
              std::tie(expected, obvious.params, obvious.lastElement))
        << "seed " << seed << ": "
        << testing::PrintToString(std::tie(text, path, obvious.defaultValue, obvious.notFoundValue));
  }
}

TEST(TagReader, ReadsElementsAlsoOfHugeMalformedText) {
  const auto repeated = [](TextView piece, int times) {
    Text text;
    for (int i = 0; i < times; ++i) text += piece;
    return text;
  };
  const auto nested = [&](int depth) { return repeated(u"<a>", depth) + u"x" + repeated(u"</a>", depth); };
  // What it shows, the text and the path; the result and the attributes.
  const std::tuple<const char*, Text, Text, Text, Text> cases[] = {
      {"spaces and line ends stay", u"<a x=\"1\" y> z\r\n</a>", u"A", u" z\r\n", u"x=\"1\" y"},
      {"same name inside", u"<a>1<A q>x</A>2</a><a>3</a>", u"a[2]", u"3", u"kept"},
      {"spaces between steps are cut", u"<l><i>1</i><i> 2 </i></l>", u"l\\i[2]", u"2", u"kept"},
      {"too deep, which also hides what follows", nested(1002) + u"<a>1</a>", u"a[2]", u"absent", u""},
      {"only <", repeated(u"<", 1'000'000), u"a", u"absent", u""},
      {"open tags", repeated(u"<a>", 30'000), u"a[30000]", u"default", u"kept"},
      {"closing tags", u"<a>1</a>" + repeated(u"</a>", 30'000), u"a[2]", u"absent", u""},
      {"deep", nested(30'000), u"a[2]", u"absent", u""},
      {"self-closing", repeated(u"<a x/>", 30'000), u"a[30000]", u"default", u"x"},
      {"long path", nested(501), repeated(u"a\\", 500) + u"a", u"x", u"kept"},
  };
  for (const auto& [name, text, path, result, attributes] : cases) {
    Text params = u"kept";
    EXPECT_EQ(clsZantorXml().getTag(text, path, params, u"default", u"absent"), result) << name;
    EXPECT_EQ(params, attributes) << name;
  }
}

TEST(TagReader, CountsAndCuts) {
  EXPECT_EQ(clsZantorXml::countOccurrences(u"", u"a", false), -1);
  EXPECT_EQ(clsZantorXml::countOccurrences(u"aAaxA", u"Aa", true), 1);
  EXPECT_EQ(clsZantorXml::getBetween(u"xABxcabyCzc", u"ab", u"c", true, true), u"abyCzc");
  EXPECT_EQ(clsZantorXml::getBetween(u"((x(", u"((", u"(", false, true), u"((");
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
};

TEST_F(ToolkitTest, CodesTheSameTextInEveryVersion) {
  const Text setting = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  const Text longText = randomText(5000);
  // Text, key and the end of the hexadecimal digits; every one depends on all of the text before it.
  const std::tuple<Text, Text, Text> cases[] = {
      {u"kqv5830tyemxwu71", u"", u"890BA76BB3FF41DA4DD356E99A4CBF8B"},
      {setting, u"sixteen letters!", u"25334F6F787C8F97C3BDCACAE8F1E3ED"},
      {longText, setting, u"31BDE77C4E4018C7AE1946014FE4FC07"},
      {u"\u0160krjan\u010Dek \u4E00", u"k", u"6A32F23B0ECFC088C96605"},
  };
  for (const auto& [text, key, end] : cases) {
    EXPECT_TRUE(coder.EnCodeLight(text, key, true).ends_with(end)) << testing::PrintToString(end);
  }
  EXPECT_TRUE(toolkit.bas().StrCheckSum2(longText, 31, true).ends_with(u"57E2C0ABF638F447EFF95125B0A85C7F"));
  EXPECT_EQ(toolkit.bas().StrCheckSum2(u"a", 0, true), u"");
}

TEST_F(ToolkitTest, TakesBackWhatItCoded) {
  for (const std::size_t length : {0U, 1U, 15U, 16U, 300U}) {
    const Text text = randomText(length);
    const Text key = randomText(length);
    for (const bool hex : {false, true}) {
      EXPECT_EQ(coder.DeCodeLight(coder.EnCodeLight(text, key, hex), key, hex), text) << length;
    }
  }
  EXPECT_EQ(coder.DeCodeLight(u"6a32f23b0ecfc088c96605", u"k", true), u"\u0160krjan?ek ?");
  for (const TextView input : {u"ABC", u"0G", u"G0"}) EXPECT_EQ(coder.DeCodeLight(input, u"", true), u"");
}

TEST_F(ToolkitTest, StartsWithTheBuiltInVariablesAndTheCommandWords) {
  store.initBuiltInVars();
  machine.clock.date.year = 2027;
  EXPECT_EQ(store.getVar(u"_now"), u"14.3.2026 12:0:0");
  EXPECT_EQ(store.getVar(u"_EmptyDate"), u"30.12.1899 00:00:00");
  Text characters;
  for (const TextView name : {u"_tab", u"_cr", u"_lf", u"_crlf", u"_nullChr", u"_back", u"_ff", u"_vtab"}) {
    characters += store.getVar(name);
  }
  EXPECT_EQ(characters, Text(u"\t\r\n\r\n\0\b\f\v", 9));
  EXPECT_NE(store.findVar(u"err.description"), nullptr);
  EXPECT_EQ(store.getVar(u"err.number"), u"0");
  for (int i = 0; i < 2; ++i) store.buildCommandList();
  EXPECT_TRUE(store.commandList().starts_with(u":File;:Drive;:File.append;:File.savecontent;"));
  EXPECT_TRUE(store.commandList().ends_with(u":xml.getTag;:now;:sendSMS;:end;:Cache;"));
  EXPECT_EQ(store.commandList().size(), 765U);
}

TEST_F(ToolkitTest, FindsVariablesInAnyLetterCaseAndChangesThemUnlessConstant) {
  store.setVar(u"Err.\u010Cas", u"1");
  store.setVar(u"err.\u010Das", u"2");
  EXPECT_EQ(store.getVar(u"Err.\u010Cas"), u"2");
  store.setVar(u"_mine", u"first");
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
  EXPECT_EQ(store.getEnvVar(u"date"), u"29.2.2024 23:59:58");
  EXPECT_EQ(store.getEnvVar(u"TEMP"), u"C:\\Temp");
}

TEST_F(ToolkitTest, KnowsYesInBothLanguagesAndTakesTheRestForNo) {
  const TextView words[] = {u"Da", u"yEs",   u"1",         u"true",      u"-1",
                            u"On", u"vklop", u"VKLOPLJEN", u"vklopljeno"};
  for (const TextView yes : words) EXPECT_TRUE(clsZantorBas::GetTF(yes)) << testing::PrintToString(yes);
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
  machine.random.script = {1 - 0x1p-53};
  EXPECT_NE(toolkit.bas().uniqueText(30), later);
}

TEST_F(ToolkitTest, DelaysForTheWholeTimeWhateverTheClockDoes) {
  for (const double none : {0.0, -1.0, std::nan("")}) toolkit.bas().DelayEvents(none);
  EXPECT_EQ(events.processed, 3) << "events are delivered at least once";
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
  const Text path = folder.text() + u"\u017Eiga.txt";
  for (const TextView line : {u"first", u"", u"a\nb"}) toolkit.file().AppendToFile(path, line, 0);
  toolkit.file().AppendToFile(path, u"\u20AC\u017E", -1);
  toolkit.file().AppendToFile(path, TextView(u"\0\n\u4E2D", 3), 1);
  EXPECT_EQ(folder.contents(u"\u017Eiga.txt"), std::string("first\r\n\r\na\nb\r\n\x80\x9E\0\n?", 19));
}

TEST_F(ToolkitTest, AppendsOnceTheFileCanBeOpenedAndGivesUpAfterFiveFailures) {
  // Each failing step costs a pause: the opening all five, every step after it one more.
  const Text late = folder.text() + u"late/lines.txt";
  toolkit.file().AppendToFile(late, u"lost", 0);
  EXPECT_EQ(events.waits, std::vector<double>(6, 0.1));
  toolkit.file().AppendToFile(late, u"lost", 1);
  EXPECT_EQ(events.waits.size(), 6U + 7U);
  events.onEvents = [this] {
    if (events.waits.size() == 17) std::filesystem::create_directory(folder.path / "late");
  };
  toolkit.file().AppendToFile(late, u"saved", 0);
  EXPECT_EQ(events.waits.size(), 17U);
  EXPECT_EQ(folder.contents(u"late/lines.txt"), "saved\r\n");
}

}  // namespace
}  // namespace fiar
