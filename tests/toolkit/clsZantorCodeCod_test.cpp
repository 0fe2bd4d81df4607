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

  /// A text of any characters, always the same one of each length.
  Text anyText(std::uint32_t length) const {
    std::mt19937 random(length);
    Text text;
    while (text.size() < length) text += machine.codePage.character(static_cast<std::uint8_t>(random()));
    return text;
  }
  /// The last ones of hexadecimal digits; every one depends on all of the coded text before it.
  static std::string endOf(const Text& digits) {
    return toUtf8(TextView(digits).substr(digits.size() - std::min<std::size_t>(digits.size(), 32)));
  }
};

TEST_F(TextCoder, GivesTheSameTextInEveryVersionAndBack) {
  const Text setting = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  const struct {
    Text text;
    Text key;
    std::string end;
  } cases[] = {
      {u"", setting, ""},
      {u"a", u"", "77"},
      {setting, u"", "39D7CBC334D06FFF7B0990189A1BA527"},
      {u"kqv5830tyemxwu71", u"", "890BA76BB3FF41DA4DD356E99A4CBF8B"},
      {anyText(255), anyText(2), "E5940D5E9529CF378EA3EF349E734151"},
      {anyText(256), anyText(15), "FE5E41F73C54FC1EDEDDAD96F1CEA319"},
      {anyText(257), anyText(16), "5426693F3873A7317FCED40164ED6DD0"},
      {anyText(258), anyText(17), "DF435F72EA4730AA697AFBB3B3478C6D"},
      {anyText(5000), anyText(300), "BF76CFE215ACF304CC73D521A403F5B8"},
  };
  for (const auto& [text, key, end] : cases) {
    SCOPED_TRACE(end);
    const Text coded = coder.EnCodeLight(text, key, true);
    EXPECT_EQ(endOf(coded), end);
    EXPECT_EQ(coded.size(), 2 * text.size());
    EXPECT_TRUE(coder.DeCodeLight(coded, key, true) == text);
    EXPECT_TRUE(coder.DeCodeLight(coder.EnCodeLight(text, key, false), key, false) == text);
  }
  EXPECT_EQ(endOf(coder.EnCodeLight(u"\u0160krjan\u010Dek \u4E00", u"k", true)), "6A32F23B0ECFC088C96605");
  for (const TextView never : {u"ABC", u"0G", u"A "}) EXPECT_EQ(coder.DeCodeLight(never, u"", true), u"");
}

TEST_F(TextCoder, SumsTextsUp) {
  const struct {
    std::uint32_t length;
    int samples;
    std::string end;
  } cases[] = {{0, 32, ""},
               {1, 0, ""},
               {1, 1, "CD"},
               {1, 32, "A5F74A9AEB49A80461BB166EC70DDA1E"},
               {40, 3, "4689D4"},
               {257, 17, "E3B4EE5B1A535EAC34FBD21AC7B8EC65"},
               {2049, 32, "A3E372FC05E5F81BF2861C8A3A60B2C2"},
               {5000, 32, "B6EBD2BF395E456555C42CF754462E58"},
               {5000, 301, "5A7D4A3D307768CDBD15049C2B5AC269"}};
  for (const auto& [length, samples, end] : cases) {
    SCOPED_TRACE(testing::Message() << length << ", " << samples);
    const Text sum = toolkit.bas().StrCheckSum2(anyText(length), samples, true);
    EXPECT_EQ(endOf(sum), end);
    EXPECT_EQ(toolkit.bas().StrCheckSum2(anyText(length), samples, false).size(), sum.size() / 2);
  }
  EXPECT_EQ(clsZantorBas::MesajText(u"123456"), u"254361");
  EXPECT_EQ(clsZantorBas::MesajText(u"123"), u"23$1");
  EXPECT_EQ(clsZantorBas::MesajText(u""), u"");
}

}  // namespace
}  // namespace fiar
