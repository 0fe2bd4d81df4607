#include "platform/text.h"

#include <gtest/gtest.h>

namespace fiar {
namespace {

TEST(Capitals, FollowTheSystemOneToOne) {
  struct Case {
    TextView text;
    TextView upper;
  };
  for (const Case& c : {
           Case{u"", u""},
           Case{u"azAZ09@[`{~", u"AZAZ09@[`{~"},
           Case{u"\u010D\u0161\u017E\u0111\u00E9\u00FF", u"\u010C\u0160\u017D\u0110\u00C9\u0178"},
           Case{u"\u03B1\u0436\u0451\u0561", u"\u0391\u0416\u0401\u0531"},
           // One capital letter of two characters, none at all, or one in ASCII only.
           Case{u"\u00DF\uFB01\u4E2D\u0131\u017F\u212A", u"\u00DF\uFB01\u4E2D\u0131\u017F\u212A"},
           // A letter beyond 16 bits is two characters, and neither has a case.
           Case{u"\U00010428", u"\U00010428"},
       }) {
    EXPECT_EQ(toUpper(c.text), c.upper) << toUtf8(c.text);
    EXPECT_TRUE(equalIgnoringCase(c.text, c.upper)) << toUtf8(c.text);
    EXPECT_EQ(hashIgnoringCase(c.text), hashIgnoringCase(c.upper)) << toUtf8(c.text);
  }
}

TEST(Capitals, KeepAsciiAndTheRestApart) {
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    const auto character = static_cast<char16_t>(code);
    const char16_t upper = toUpper(character);
    ASSERT_EQ(upper < 0x80, code < 0x80) << code;
    ASSERT_EQ(toUpper(upper), upper) << code;
  }
}

TEST(TextComparison, IgnoresCaseOnly) {
  EXPECT_FALSE(equalIgnoringCase(u"name", u"name "));
  EXPECT_FALSE(equalIgnoringCase(u"name", u"nam"));
  EXPECT_FALSE(equalIgnoringCase(u"name", TextView(u"name\0", 5)));
  EXPECT_FALSE(equalIgnoringCase(u"c", u"\u010D"));
  EXPECT_NE(hashIgnoringCase(u"0000P0001"), hashIgnoringCase(u"0000P0010"));
}

TEST(TrimSpaces, LeavesTabsAndLineEnds) {
  EXPECT_EQ(trimSpaces(u"  a b  "), u"a b");
  EXPECT_EQ(trimSpaces(u" \t a\r\n"), u"\t a\r\n");
  EXPECT_EQ(trimSpaces(u"   "), u"");
  EXPECT_EQ(trimSpaces(u""), u"");
  EXPECT_EQ(trimSpaces(u"\u00A0 "), u"\u00A0");
}

TEST(Utf8, CarriesEveryCharacterBothWays) {
  struct Case {
    TextView text;
    std::string_view bytes;
  };
  for (const Case& c : {
           Case{TextView(u"a\0\x7F", 3), std::string_view("a\0\x7F", 3)},
           Case{u"\u0080\u07FF", "\xC2\x80\xDF\xBF"},
           Case{u"\u0800\uD7FF\uE000\uFFFF", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"},
           Case{u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
       }) {
    EXPECT_EQ(toUtf8(c.text), c.bytes);
    EXPECT_EQ(fromUtf8(c.bytes), c.text);
  }
}

TEST(Utf8, ReplacesWhatIsMalformed) {
  constexpr TextView kOne = u"\uFFFD";
  constexpr TextView kTwo = u"\uFFFD\uFFFD";
  constexpr TextView kThree = u"\uFFFD\uFFFD\uFFFD";
  constexpr TextView kFour = u"\uFFFD\uFFFD\uFFFD\uFFFD";
  struct Case {
    std::string_view bytes;
    TextView text;
  };
  for (const Case& c : {
           Case{"\x80", kOne},               // a byte that continues nothing
           Case{"\xC4", kOne},               // cut off
           Case{"\xF0\x90\x80", kThree},     // cut off
           Case{"\xC0\x80", kTwo},           // longer than need be
           Case{"\xE0\x9F\xBF", kThree},     // longer than need be
           Case{"\xF0\x8F\xBF\xBF", kFour},  // longer than need be
           Case{"\xED\xA0\x80", kThree},     // half of a surrogate pair
           Case{"\xF4\x90\x80\x80", kFour},  // beyond the last character
           Case{"\xC4"
                "a",
                u"\uFFFDa"},  // the next character survives
       }) {
    EXPECT_EQ(fromUtf8(c.bytes), c.text) << testing::PrintToString(c.bytes);
  }
  for (const Text& unpaired : {Text{0xD800}, Text{0xDFFF}}) EXPECT_EQ(toUtf8(unpaired), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(Text{0xDC00, 0xD83D, u'a'}),
            "\xEF\xBF\xBD\xEF\xBF\xBD"
            "a");
}

}  // namespace
}  // namespace fiar
