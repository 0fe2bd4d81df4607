#include "opponent/pattern_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "platform/files.h"
#include "support/loaded_toolkit.h"
#include "support/temporary_folder.h"

namespace fiar {
namespace {

class PatternTable : public testing::Test, protected test::LoadedToolkit {
protected:
  std::string shippedTable() const { return machine.resources.custom(kPatternTableResource).value(); }
  std::string weightOf(TextView key) { return toUtf8(toolkit.variables().getVar(key)); }
};

TEST_F(PatternTable, HoldsTheTellingWeights) {
  const std::pair<TextView, const char*> rows[] = {
      {u"0000P0000", "0"},       {u"1000P0000", "1"},       {u"0110P0000", "15"},
      {u"0001P0000", "80"},      {u"0101P0000", "85"},      {u"0011P0000", "190"},
      {u"1011P0000", "191"},     {u"0001P1000", "260"},     {u"0111P0000", "1195"},
      {u"0011P1000", "1370"},    {u"1111P0000", "1001196"}, {u"0011P1100", "1002480"},
      {u"0111P1110", "3004490"}, {u"1111P1111", "5004492"}, {u"0000P2000", ""},
      {u"0000P000", ""},
  };
  for (const auto& [key, weight] : rows) EXPECT_EQ(weightOf(key), weight) << toUtf8(key);
}

TEST_F(PatternTable, MirrorImagesWeighTheSame) {
  for (int n = 0; n < kPatternCount; ++n) {
    const Text key = patternKey(n);
    EXPECT_EQ(weightOf(key), weightOf(Text(key.rbegin(), key.rend()))) << toUtf8(key);
    EXPECT_NE(weightOf(key), "") << toUtf8(key);
  }
}

TEST_F(PatternTable, IsWhatTheGeneratorWritesEachTime) {
  const test::TemporaryFolder folder;
  toolkit.values().applicationFolder = folder.text();
  const std::string lines = shippedTable().substr(0, shippedTable().find('\0')) + "\r\n";
  std::string expected;
  for (int run = 0; run < 2; ++run) {
    genUtezi(toolkit);
    expected += lines;
    std::ifstream file(nativePath(folder.text() + u"spremenljivka.txt"), std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), expected);
  }
}

TEST_F(PatternTable, TakesWhatTheFormatAllows) {
  // A third column is left out, an empty key is one, and a number may have spaces and decimals.
  using namespace std::string_literals;
  loadPatternTable("0000P0001,7,x\r\n,2\r\n0000P0010, 1.5 \r\n0000P0011,3\0\0z"s, toolkit);
  EXPECT_EQ(weightOf(u"0000P0001"), "7");
  EXPECT_EQ(weightOf(u""), "2");
  EXPECT_EQ(weightOf(u"0000P0010"), "1.5");
  EXPECT_EQ(weightOf(u"0000P0011"), "3");
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
