#include "opponent/pattern_table.h"

#include <gtest/gtest.h>

#include <string>

#include "support/loaded_toolkit.h"
#include "support/temporary_folder.h"

namespace fiar {
namespace {

struct PatternTable : testing::Test, test::LoadedToolkit {
  Text weightOf(TextView key) { return toolkit.variables().getVar(key); }
};

TEST_F(PatternTable, HoldsTheTellingWeights) {
  const std::pair<TextView, TextView> rows[] = {
      {u"0000P0000", u"0"},       {u"1000P0000", u"1"},       {u"0110P0000", u"15"},
      {u"0001P0000", u"80"},      {u"0101P0000", u"85"},      {u"0011P0000", u"190"},
      {u"0001P1000", u"260"},     {u"0111P0000", u"1195"},    {u"0011P1000", u"1370"},
      {u"1111P0000", u"1001196"}, {u"0111P1110", u"3004490"}, {u"1111P1111", u"5004492"}};
  for (const auto& [key, weight] : rows) EXPECT_EQ(weightOf(key), weight) << toUtf8(key);
  for (int n = 0; n < kPatternCount; ++n) {
    const Text key = patternKey(n);
    EXPECT_EQ(weightOf(key), weightOf(Text(key.rbegin(), key.rend()))) << toUtf8(key);
  }
}

TEST_F(PatternTable, IsWhatTheGeneratorWritesEachTime) {
  const test::TemporaryFolder folder;
  toolkit.values().applicationFolder = folder.text();
  const std::string shipped = machine.resources.custom(kPatternTableResource).value();
  const std::string lines = shipped.substr(0, shipped.find('\0')) + "\r\n";
  for (const std::string& expected : {lines, lines + lines}) {
    genUtezi(toolkit);
    EXPECT_EQ(folder.contents(u"spremenljivka.txt"), expected);
  }
}

TEST_F(PatternTable, TakesWhatTheFormatAllows) {
  // A third column is left out, an empty key is one, and a number may have spaces and decimals.
  using namespace std::string_literals;
  loadPatternTable("0000P0001,7,x\r\n,2\r\n0000P0010, 1.5 \r\n0000P0011,3\0\0z"s, toolkit);
  const std::pair<TextView, TextView> rows[] = {
      {u"0000P0001", u"7"}, {u"", u"2"}, {u"0000P0010", u"1.5"}, {u"0000P0011", u"3"}};
  for (const auto& [key, weight] : rows) EXPECT_EQ(weightOf(key), weight) << toUtf8(key);
}

TEST_F(PatternTable, NamesTheResourceOfAMalformedTable) {
  for (const char* bytes :
       {"", "0000P0001", "0000P0001,", "0000P0001,x", "0000P0001,1\r\n", "a,1\n0000P0001"}) {
    try {
      loadPatternTable(bytes, toolkit);
      ADD_FAILURE() << "no error: " << bytes;
    } catch (const PatternTableError& error) {
      EXPECT_NE(std::string(error.what()).find("102"), std::string::npos) << error.what();
    }
  }
}

}  // namespace
}  // namespace fiar
