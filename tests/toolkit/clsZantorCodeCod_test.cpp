#include "toolkit/clsZantorCodeCod.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/loaded_toolkit.h"
#include "toolkit/clsZantorBas.h"

namespace fiar {
namespace {

struct TextCoder : testing::Test, test::FakeToolkit {
  clsZantorCodeCod& coder = toolkit.codeCod();

  Text randomText(std::size_t length, std::mt19937& random) const {
    Text text;
    while (text.size() < length) text += machine.codePage.character(static_cast<std::uint8_t>(random()));
    return text;
  }
};

TEST_F(TextCoder, GivesTheSameTextInEveryVersion) {
  const Text setting = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  std::mt19937 random(20260314);
  const Text longText = randomText(5000, random);
  const struct {
    Text text;
    Text key;
    Text end;  // of the hexadecimal digits; every one depends on all of the text before it
  } cases[] = {
      {u"", setting, u""},
      {u"kqv5830tyemxwu71", u"", u"890BA76BB3FF41DA4DD356E99A4CBF8B"},
      {setting, u"sixteen letters!", u"25334F6F787C8F97C3BDCACAE8F1E3ED"},
      {setting, longText, u"F577670B9E1E15B1119B2AC6C045CF5D"},
      {longText, setting, u"31BDE77C4E4018C7AE1946014FE4FC07"},
      {u"\u0160krjan\u010Dek \u4E00", u"k", u"6A32F23B0ECFC088C96605"},
  };
  for (const auto& c : cases) {
    const Text coded = coder.EnCodeLight(c.text, c.key, true);
    EXPECT_EQ(coded.size(), 2 * c.text.size());
    EXPECT_TRUE(coded.ends_with(c.end)) << testing::PrintToString(coded);
  }
  EXPECT_TRUE(toolkit.bas().StrCheckSum2(longText, 31, true).ends_with(u"57E2C0ABF638F447EFF95125B0A85C7F"));
}

TEST_F(TextCoder, TakesBackWhatItCoded) {
  std::mt19937 random(1);
  for (const std::size_t keyLength : {0U, 1U, 15U, 16U, 300U}) {
    const Text text = randomText(257, random);
    const Text key = randomText(keyLength, random);
    for (const bool hex : {false, true}) {
      EXPECT_EQ(coder.DeCodeLight(coder.EnCodeLight(text, key, hex), key, hex), text) << keyLength;
    }
  }
  for (const TextView input : {u"ABC", u"0G", u"A "}) EXPECT_EQ(coder.DeCodeLight(input, u"", true), u"");
  EXPECT_EQ(toolkit.bas().StrCheckSum2(u"a", 0, true), u"");
  EXPECT_EQ(clsZantorBas::MesajText(u"123456"), u"254361");
  EXPECT_EQ(clsZantorBas::MesajText(u"123"), u"23$1");
}

}  // namespace
}  // namespace fiar
