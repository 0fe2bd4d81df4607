#include <gtest/gtest.h>

#include <cmath>

#include "platform/mersenne_twister.h"
#include "platform/wave_image.h"
#include "support/fake_platform.h"

namespace fiar {
namespace {

using namespace std::literals;

TEST(MersenneTwister, StaysBelowOneAndRepeatsForTheSameSeedOnly) {
  std::array<MersenneTwister, 3> generators;
  for (std::size_t i = 0; i < 3; ++i) generators[i].seed(i == 2 ? 43200.26 : 43200.25);
  double sum = 0;
  for (int i = 0; i < 10000; ++i) {
    const double value = generators[0].next();
    ASSERT_TRUE(value >= 0 && value < 1 && value == generators[1].next() && value != generators[2].next());
    sum += value;
  }
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

std::string chunk(const std::string& name, const std::string& body) {
  return name + static_cast<char>(body.size()) + "\0\0\0"s + body + std::string(body.size() % 2, '\0');
}

TEST(WaveImage, IsPlayableWhenWholeOnly) {
  const std::string format = chunk("fmt ", std::string(16, '\1'));
  const std::string data = chunk("data", "abc");
  const std::string playable = format + data;
  const auto wave = [](const std::string& chunks) { return chunk("RIFF", "WAVE" + chunks); };

  const std::string whole = wave(chunk("LIST", "odd") + playable);
  EXPECT_TRUE(isPlayableWave(whole + "after the end"));
  // The last pad byte may be missing.
  EXPECT_TRUE(isPlayableWave(wave(format + data.substr(0, data.size() - 1))));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // A copy of its own, so that a read beyond the end is noticed.
    EXPECT_FALSE(isPlayableWave(std::string(whole, 0, length))) << length;
  }
  for (const std::string& image :
       {chunk("RIFF", "WEVA" + playable), chunk("RIFX", "WAVE" + playable), wave(format), wave(data + format),
        wave(format + chunk("data", "")), wave(chunk("fmt ", std::string(15, '\1')) + data),
        wave(playable + "data\2\0\0\0a"s)}) {
    EXPECT_FALSE(isPlayableWave(image)) << testing::PrintToString(image);
  }
}

TEST(Text, IsComparedWithoutRegardToCaseOnly) {
  // Among them, unchanged: capital letters of two characters, none at all, one in ASCII only.
  const TextView text =
      u"azAZ09@[`{~\u010D\u0111\u00E9\u00FF\u0436\u0561\u00DF\uFB01\u4E2D\u0131\u017F\u212A";
  const TextView upper =
      u"AZAZ09@[`{~\u010C\u0110\u00C9\u0178\u0416\u0531\u00DF\uFB01\u4E2D\u0131\u017F\u212A";
  EXPECT_EQ(toUpper(text), upper);
  EXPECT_EQ(hashIgnoringCase(text), hashIgnoringCase(upper));
  EXPECT_FALSE(equalIgnoringCase(u"name", u"name "));
  EXPECT_NE(hashIgnoringCase(u"0000P0001"), hashIgnoringCase(u"0000P0010"));
  EXPECT_EQ(trimSpaces(u"  \t a b\r\n  "), u"\t a b\r\n");
}

TEST(Numbers, AreShortAndRegional) {
  test::FakeRegionalFormat format;
  format.separator = u',';
  const std::pair<double, TextView> cases[] = {
      {-0.0, u"0"},        {-1, u"-1"},          {999999999999999, u"999999999999999"},
      {1e15, u"1E+15"},    {0.0001, u"0,0001"},  {1.0 / 3, u"0,333333333333333"},
      {0.00001, u"1E-05"}, {-INFINITY, u"-inf"}, {-0x1p-1074, u"-4,94065645841247E-324"},
      {-NAN, u"nan"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(format.numberText(value), text) << value;
}

TEST(Numbers, AreReadWithTheSeparatorOfTheFormatAndWithNothingElse) {
  test::FakeRegionalFormat format;
  const std::pair<TextView, std::optional<double>> cases[] = {
      {u"5004492", 5004492}, {u" -12 ", -12},  {u"+7", 7},          {u".5", 0.5},
      {u"2.5E-1", 0.25},     {u"1.0e3", 1000}, {u"7.5\0\0"sv, 7.5}, {u"3. \0x"sv, 3},
      {u"\0001"sv, {}},      {u"", {}},        {u"-", {}},          {u".", {}},
      {u"+-1", {}},          {u"1 2", {}},     {u"0x10", {}},       {u"1e", {}},
      {u"1,000.5", {}},      {u"inf", {}},     {u"1E+309", {}},     {u"\u0661", {}}};
  for (const auto& [text, value] : cases) {
    EXPECT_EQ(format.number(text), value) << testing::PrintToString(text);
  }
  format.separator = u',';
  EXPECT_EQ(format.number(u"2.5"), std::nullopt);
  EXPECT_EQ(format.number(u"2,5e3"), 2500);
}

}  // namespace
}  // namespace fiar
