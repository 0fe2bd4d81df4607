#include "platform/text.h"

#include <gtest/gtest.h>

namespace fiar {
namespace {

TEST(Capitals, FollowTheSystemOneToOne) {
  const std::pair<TextView, TextView> cases[] = {
      {u"azAZ09@[`{~", u"AZAZ09@[`{~"},
      {u"\u010D\u0161\u017E\u0111\u00E9\u00FF", u"\u010C\u0160\u017D\u0110\u00C9\u0178"},
      {u"\u03B1\u0436\u0451\u0561", u"\u0391\u0416\u0401\u0531"},
      // A capital letter of two characters, none at all, one in ASCII only, one beyond 16 bits.
      {u"\u00DF\uFB01\u4E2D\u0131\u017F\u212A\U00010428", u"\u00DF\uFB01\u4E2D\u0131\u017F\u212A\U00010428"}};
  for (const auto& [text, upper] : cases) {
    EXPECT_EQ(toUpper(text), upper) << toUtf8(text);
    EXPECT_TRUE(equalIgnoringCase(text, upper)) << toUtf8(text);
    EXPECT_EQ(hashIgnoringCase(text), hashIgnoringCase(upper)) << toUtf8(text);
  }
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    ASSERT_EQ(toUpper(static_cast<char16_t>(code)) < 0x80, code < 0x80) << code;
  }
}

TEST(TextComparison, IgnoresCaseOnly) {
  EXPECT_FALSE(equalIgnoringCase(u"name", u"name "));
  EXPECT_FALSE(equalIgnoringCase(u"name", TextView(u"name\0", 5)));
  EXPECT_FALSE(equalIgnoringCase(u"c", u"\u010D"));
  EXPECT_NE(hashIgnoringCase(u"0000P0001"), hashIgnoringCase(u"0000P0010"));
}

TEST(TrimSpaces, LeavesTabsAndLineEnds) {
  EXPECT_EQ(trimSpaces(u"  a b  "), u"a b");
  EXPECT_EQ(trimSpaces(u" \t a\r\n"), u"\t a\r\n");
  EXPECT_EQ(trimSpaces(u"   "), u"");
}

TEST(Utf8, CarriesEveryCharacterBothWays) {
  const std::pair<TextView, std::string_view> cases[] = {
      {TextView(u"a\0\x7F", 3), std::string_view("a\0\x7F", 3)},
      {u"\u0080\u07FF", "\xC2\x80\xDF\xBF"},
      {u"\u0800\uD7FF\uE000\uFFFF", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"},
      {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"}};
  for (const auto& [text, bytes] : cases) {
    EXPECT_EQ(toUtf8(text), bytes);
    EXPECT_EQ(fromUtf8(bytes), text);
  }
}

TEST(Utf8, ReplacesEveryMalformedByte) {
  // No start, no end, longer than need be, half of a surrogate pair, beyond the last character.
  for (const std::string_view bytes : {"\x80", "\xC4", "\xF0\x90\x80", "\xC0\x80", "\xE0\x9F\xBF",
                                       "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
    const std::string next = std::string(bytes) + "a";
    EXPECT_EQ(fromUtf8(bytes), Text(bytes.size(), u'\uFFFD')) << testing::PrintToString(bytes);
    EXPECT_EQ(fromUtf8(next), Text(bytes.size(), u'\uFFFD') + u'a') << testing::PrintToString(bytes);
  }
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(toUtf8(Text{0xD800}), replacement);
  EXPECT_EQ(toUtf8(Text{0xDFFF, 0xDBFF, u'a'}), replacement + replacement + "a");
}

}  // namespace
}  // namespace fiar
