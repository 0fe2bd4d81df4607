// Characters and numbers as text.

#include "platform/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>

#include "support/fake_platform.h"

namespace fiar {
namespace {

TEST(TextComparison, IgnoresCaseOnly) {
  const std::pair<TextView, TextView> cases[] = {
      {u"azAZ09@[`{~", u"AZAZ09@[`{~"},
      {u"\u010D\u0161\u017E\u0111\u00E9\u00FF", u"\u010C\u0160\u017D\u0110\u00C9\u0178"},
      {u"\u03B1\u0436\u0451\u0561", u"\u0391\u0416\u0401\u0531"},
      // A capital letter of two characters, none at all, one in ASCII only, one beyond 16 bits.
      {u"\u00DF\uFB01\u4E2D\u0131\u017F\u212A\U00010428", u"\u00DF\uFB01\u4E2D\u0131\u017F\u212A\U00010428"}};
  for (const auto& [text, upper] : cases) {
    EXPECT_EQ(toUpper(text), upper) << testing::PrintToString(text);
    EXPECT_TRUE(equalIgnoringCase(text, upper)) << testing::PrintToString(text);
    EXPECT_EQ(hashIgnoringCase(text), hashIgnoringCase(upper)) << testing::PrintToString(text);
  }
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    ASSERT_EQ(toUpper(static_cast<char16_t>(code)) < 0x80, code < 0x80) << code;
  }
  EXPECT_FALSE(equalIgnoringCase(u"name", u"name "));
  EXPECT_FALSE(equalIgnoringCase(u"name", TextView(u"name\0", 5)));
  EXPECT_FALSE(equalIgnoringCase(u"c", u"\u010D"));
  EXPECT_NE(hashIgnoringCase(u"0000P0001"), hashIgnoringCase(u"0000P0010"));
}

TEST(TrimSpaces, LeavesTabsAndLineEnds) {
  EXPECT_EQ(trimSpaces(u"  \t a b\r\n  "), u"\t a b\r\n");
}

TEST(CodePages, CarryBytesToTextAndBackAndTakeTheNearestForTheRest) {
  CodePage::Characters characters{};
  std::iota(characters.begin(), characters.end(), u'\u4E00');
  characters[7] = characters[5];
  CodePage::Bytes nearest{};
  nearest[u'\u010D'] = 'c';
  const CodePage page(characters, nearest);
  EXPECT_EQ(page.decode(std::string_view("\0\5\7\xFF", 4)), u"\u4E00\u4E05\u4E05\u4EFF");
  // Of two bytes with the same character the lower one is used.
  EXPECT_EQ(page.encode(u"\u4E00\u4E05\u4EFF\u010D"), std::string_view("\0\5\xFF\x63", 4));
}

using Limits = std::numeric_limits<double>;

TEST(NumberText, IsShortAndRegional) {
  test::FakeRegionalFormat format;
  format.separator = u',';
  using Case = std::pair<double, TextView>;
  for (const auto& [value, text] :
       {Case{-0.0, u"0"}, Case{-1, u"-1"}, Case{5004492, u"5004492"},
        Case{999999999999999, u"999999999999999"}, Case{1e15, u"1E+15"}, Case{2.5, u"2,5"},
        Case{-0.1, u"-0,1"}, Case{1.0 / 3, u"0,333333333333333"}, Case{0.0001, u"0,0001"},
        Case{0.00001, u"1E-05"}, Case{-Limits::max(), u"-1,79769313486232E+308"},
        Case{-Limits::denorm_min(), u"-4,94065645841247E-324"}, Case{-Limits::infinity(), u"-inf"},
        Case{Limits::quiet_NaN(), u"nan"}, Case{-Limits::quiet_NaN(), u"nan"}}) {
    EXPECT_EQ(format.numberText(value), text) << value;
  }
}

TEST(NumberFromText, TakesTheSeparatorOfTheFormatOnlyAndNothingElse) {
  test::FakeRegionalFormat format;
  using Case = std::pair<TextView, double>;
  for (const auto& [text, value] :
       {Case{u"5004492", 5004492}, Case{u" -12 ", -12}, Case{u"+7", 7}, Case{u".5", 0.5}, Case{u"5.", 5},
        Case{u"2.5E-1", 0.25}, Case{u"1.0e3", 1000}, Case{TextView(u"7.5\0\0", 5), 7.5},
        Case{TextView(u"3. \0x", 5), 3}}) {
    Text withComma(text);
    std::replace(withComma.begin(), withComma.end(), u'.', u',');
    format.separator = u'.';
    EXPECT_EQ(format.number(text), value) << testing::PrintToString(text);
    EXPECT_EQ(format.number(withComma).has_value(), withComma == text) << testing::PrintToString(withComma);
    format.separator = u',';
    EXPECT_EQ(format.number(withComma), value) << testing::PrintToString(withComma);
  }
  format.separator = u'.';
  EXPECT_FALSE(format.number(TextView(u"\0001", 2)).has_value());
  for (const TextView text : {u"", u"   ", u"-", u".", u"+-1", u"++1", u"1 2", u"12x", u"0x10", u"1e",
                              u"1.5.5", u"1,000.5", u"inf", u"nan", u"1E+309", u"\u0661"}) {
    EXPECT_FALSE(format.number(text).has_value()) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace fiar
