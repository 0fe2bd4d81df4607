#include "toolkit/clsZantorXml.h"

#include <gtest/gtest.h>

#include <string>

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
      {"absent", settings, u"queryPL", u"absent", u""},
      {"empty content", u"<a></a>", u"a", u"default"},
      {"element like the absent one's value", u"<a>1</a>", u"a", u"<a>1</a>", u"", u"", u"<a>1</a>"},
      {"no path", u"<>x</>", u"", u"ERR: Wrong Key"},
      {"path without an end", u"<a b=\"1\">x</a>", u"a\\", u"ERR: Wrong Key", u"b=\"1\""},
      {"index too high", list, u"i[4]", u"absent", u""},
      {"index higher than any", list, u"i[1e999]", u"absent", u""},
      {"index with decimals", list, u"i[2.9]", u"2", u"a=\"2\""},
      {"index with two signs", u"<i[+-2]>z</i[+-2]>", u"i[+-2]", u"z"},
      {"index too small", u"<i[1e-999]>z</i[1e-999]>", u"i[1e-999]", u"z"},
      {"index 0 is part of the name", u"<i[0]>z</i[0]><i>1</i>", u"i[0]", u"z"},
      {"attributes", u"<a x=\"1\" y>z</a>", u"a", u"z", u"x=\"1\" y"},
      {"a tab ends no name", u"<a\tx>z</a>", u"a", u"absent", u""},
      {"self-closing", u"<a x=\"1\"/>", u"a", u"default", u"x=\"1\""},
      {"self-closing without a space", u"<a/><a>1</a>", u"a", u"1"},
      {"self-closing inside itself", u"<a>1<a x/></a>", u"a", u"1<a x></a>"},
      {"self-closing, several slashes", u"<a x//><a y>z</a>", u"a", u"default", u"x/"},
      {"self-closing, several slashes and a copy", u"<a x//><a x//>", u"a[2]", u"default", u"x"},
      {"self-closing again when a copy comes", u"<a x//><a x/>", u"a", u"default", u"x"},
      {"self-closing, shorter than before", u"<a x/     //><a x/     //>", u"a", u"default", u"x/"},
      {"self-closing further down stays", u"<a><b x/></a>", u"a", u"<b x/>"},
      {"same name inside, with attributes", u"<a p>1<A q>x</A>2</a><a>3</a>", u"a[2]", u"3"},
      {"two steps", inList, u"l\\i", u"a", u"k=\"v\""},
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

}  // namespace
}  // namespace fiar
