#include "toolkit/clsZantorCodeCod.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/fake_platform.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

const TextView kSetting = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
const CodePage kPage = test::windows1252();

// The coder's steps one by one, with positions that count from 1.
Text codeByStep(TextView text, Text key, bool hexOutput);

int at(const std::string& bytes, std::size_t position) {
  return static_cast<unsigned char>(bytes[position - 1]);
}

Text sumByStep(const Text& source, int n, bool hexOutput) {
  const auto length = static_cast<int>(source.size());
  std::string out;
  for (int k = 1; k <= n; ++k) {
    const double position = static_cast<double>(length) / n * (k - 1) + 1;
    out += static_cast<char>(kPage.byte(source[static_cast<std::size_t>(position) - 1]));
  }
  const Text sampled = kPage.decode(out);
  for (int p = 1; p <= length; p += 2048) {
    for (int j = 0; j <= 2047 && p + j <= length; ++j) {
      const char16_t character = source[static_cast<std::size_t>(p + j / 2 - 1)];
      const int byte = j % 2 == 0 ? character % 256 : character / 256;
      char& sum = out[static_cast<std::size_t>(j % n)];
      sum = static_cast<char>((sum + byte) % 256);
    }
  }
  return codeByStep(sampled, kPage.decode(out), hexOutput);
}

Text codeByStep(TextView text, Text key, bool hexOutput) {
  const std::string salt = "q\xF7Rw\xB1\x37u9\xDFmKd\xE9\x9A-3x";
  if (text.empty()) return {};
  if (key.empty()) key = kPage.decode("\xB0peYT\x9E\x34nJ2\xE1\x63zhV85");
  if (key.size() < 16) key = sumByStep(key, 32, true);
  const std::string codes = kPage.encode(key);
  std::string ordered = salt + codes;
  if (ordered.size() % 2 != 0) ordered += "$";
  std::string work = ordered;
  for (std::size_t j = 1; j <= work.size() / 2; ++j) {
    work[2 * j - 2] = ordered[2 * j - 1];
    work[2 * j - 1] = ordered[work.size() - 2 * j];
  }
  int s = 0;
  for (std::size_t i = 1; i <= codes.size(); ++i) s += at(codes, i);
  s = s % 200 + 25;
  int t = s;
  for (std::size_t i = 1; i <= work.size(); ++i) {
    work[i - 1] = static_cast<char>((s + at(work, i)) % 256);
    t += at(work, i);
  }
  t = t % 240 + 7;
  for (std::size_t i = 1; i <= work.size(); ++i) {
    work[i - 1] = static_cast<char>(at(codes, i % codes.size() + 1) ^ at(work, i));
  }
  std::string out = kPage.encode(text);
  Text digits;
  int chain = 0;
  for (std::size_t i = 1; i <= out.size(); ++i) {
    int v = (t + at(out, i)) % 256;
    v = (v + static_cast<int>(i % 256)) % 256;
    const int w = at(work, i % work.size() + 1);
    v = (v + w) % 256;
    v = w ^ v;
    v = (chain + v) % 256;
    chain = v;
    out[i - 1] = static_cast<char>(v);
    for (const int digit : {v / 16, v % 16}) digits += u"0123456789ABCDEF"[digit];
  }
  return hexOutput ? digits : kPage.decode(out);
}

struct TextCoder : testing::Test {
  test::FakePlatform machine;
  Toolkit toolkit{machine.platform};
  clsZantorCodeCod& coder = toolkit.codeCod();

  static Text allCharacters() {
    Text text;
    for (int i = 0; i < 256; ++i) text += kPage.character(static_cast<std::uint8_t>(i));
    return text;
  }
};

TEST_F(TextCoder, GivesTheSameTextInEveryVersion) {
  struct Case {
    Text text;
    TextView key;
    std::string end;  // of the hexadecimal digits; every one depends on all of the text before it
  };
  const std::vector<Case> cases{
      {u"", kSetting, ""},
      {u"a", u"", "77"},
      {Text(kSetting), u"", "39D7CBC334D06FFF7B0990189A1BA527"},
      {u"kqv5830tyemxwu71", u"", "890BA76BB3FF41DA4DD356E99A4CBF8B"},
      {Text(kSetting), u"fifteen letters", "BD43DB8774FCF7936BF98276F88305A3"},
      {Text(kSetting), u"sixteen letters!", "25334F6F787C8F97C3BDCACAE8F1E3ED"},
      {allCharacters(), kSetting, "6CF68A28B8AA5EF45C06F2D47416C21C"},
      {u"\u0160krjan\u010Dek \u4E00", u"k", "6A32F23B0ECFC088C96605"},
  };
  for (const Case& c : cases) {
    const Text coded = coder.EnCodeLight(c.text, c.key, true);
    const std::string digits(coded.begin(), coded.end());
    EXPECT_EQ(digits.size(), 2 * c.text.size());
    EXPECT_EQ(digits.substr(digits.size() - std::min<std::size_t>(digits.size(), 32)), c.end);
  }
}

TEST_F(TextCoder, FollowsItsStepsAndBack) {
  std::mt19937 random(20260314);
  const auto randomText = [&](std::size_t length) {
    Text text;
    while (text.size() < length) text += kPage.character(static_cast<std::uint8_t>(random()));
    return text;
  };
  for (const std::size_t length : {1U, 2U, 40U, 255U, 256U, 257U, 5000U}) {
    for (const std::size_t keyLength : {0U, 1U, 2U, 15U, 16U, 17U, 31U, 300U}) {
      SCOPED_TRACE(testing::Message() << length << " characters, key of " << keyLength);
      const Text text = randomText(length);
      const Text key = randomText(keyLength);
      for (const bool hex : {false, true}) {
        const Text coded = coder.EnCodeLight(text, key, hex);
        EXPECT_TRUE(coded == codeByStep(text, key, hex));
        EXPECT_TRUE(coder.DeCodeLight(coded, key, hex) == text);
        const auto n = static_cast<int>(keyLength + 1);
        EXPECT_TRUE(toolkit.bas().StrCheckSum2(text, n, hex) == sumByStep(text, n, hex));
      }
    }
  }
}

TEST_F(TextCoder, RefusesWhatItNeverGives) {
  for (const TextView input : {u"", u"ABC", u"0G", u"A "})
    EXPECT_EQ(coder.DeCodeLight(input, u"", true), u"");
  EXPECT_EQ(toolkit.bas().StrCheckSum2(u"", 32, true), u"");
  EXPECT_EQ(toolkit.bas().StrCheckSum2(u"a", 0, true), u"");
}

TEST_F(TextCoder, ShufflesInPairs) {
  EXPECT_EQ(clsZantorBas::MesajText(u"123456"), u"254361");
  EXPECT_EQ(clsZantorBas::MesajText(u"123"), u"23$1");
  EXPECT_EQ(clsZantorBas::MesajText(u""), u"");
}

}  // namespace
}  // namespace fiar
