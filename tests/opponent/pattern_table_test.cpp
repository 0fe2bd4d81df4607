#include "opponent/pattern_table.h"

#include <gtest/gtest.h>

#include <string>

#include "support/loaded_toolkit.h"
#include "support/temporary_folder.h"

namespace fiar {
namespace {

struct PatternTable : testing::Test, test::LoadedToolkit {};

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
  for (const auto& [key, weight] : rows) EXPECT_EQ(toolkit.variables().getVar(key), weight);
}

TEST_F(PatternTable, NamesTheResourceOfAMalformedTable) {
  for (const char* bytes :
       {"", "0000P0001", "0000P0001,", "0000P0001,x", "0000P0001,1\r\n", "a,1\n0000P0001"}) {
    try {
      loadPatternTable(bytes, toolkit);
      ADD_FAILURE() << "no error: " << bytes;
    } catch (const PatternTableError& error) {
      EXPECT_TRUE(error.message().starts_with(u"Resource 102 (the pattern table): "));
    }
  }
}

}  // namespace
}  // namespace fiar
