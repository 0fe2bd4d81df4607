#include "platform/regional_format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>

#include "support/fake_platform.h"

namespace fiar {
namespace {

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

TEST(NumberFromText, TakesTheSeparatorOfTheFormatOnly) {
  using Case = std::pair<TextView, double>;
  for (const auto& [text, value] :
       {Case{u"5004492", 5004492}, Case{u" -12 ", -12}, Case{u"+7", 7}, Case{u".5", 0.5}, Case{u"5.", 5},
        Case{u"2.5E-1", 0.25}, Case{u"1.0e3", 1000}, Case{TextView(u"7.5\0\0", 5), 7.5},
        Case{TextView(u"3. \0x", 5), 3}}) {
    test::FakeRegionalFormat format;
    EXPECT_EQ(format.number(text), value) << toUtf8(text);
    Text withComma(text);
    std::replace(withComma.begin(), withComma.end(), u'.', u',');
    EXPECT_EQ(format.number(withComma).has_value(), withComma == text) << toUtf8(withComma);
    format.separator = u',';
    EXPECT_EQ(format.number(withComma), value) << toUtf8(withComma);
  }
}

TEST(NumberFromText, IsAbsentForAnythingElse) {
  const test::FakeRegionalFormat format;
  for (const TextView text : {u"", u"   ", u"-", u".", u"+-1", u"++1", u"1 2", u"12x", u"0x10", u"1e",
                              u"1.5.5", u"1,000.5", u"inf", u"nan", u"1E+309", u"\u0661"}) {
    EXPECT_FALSE(format.number(text).has_value()) << toUtf8(text);
  }
  EXPECT_FALSE(format.number(TextView(u"\0001", 2)).has_value());
}

TEST(SystemRegionalFormat, ReadsItsOwnNumbersAndShowsEveryPartOfADate) {
  const RegionalFormat& format = systemRegionalFormat();
  for (const double value : {0.0, -2.5, 1001196.0, 1e-300}) {
    EXPECT_EQ(format.number(format.numberText(value)), value);
  }
  std::set<Text> texts;
  for (const DateTime& date :
       {DateTime{2024, 2, 28, 1, 47, 58}, DateTime{2025, 2, 28, 1, 47, 58}, DateTime{2024, 3, 28, 1, 47, 58},
        DateTime{2024, 2, 29, 1, 47, 58}, DateTime{2024, 2, 28, 13, 47, 58}, DateTime{2024, 2, 28, 1, 48, 58},
        DateTime{2024, 2, 28, 1, 47, 59}, kEmptyDate}) {
    EXPECT_TRUE(texts.insert(format.dateTimeText(date)).second) << toUtf8(format.dateTimeText(date));
  }
}

}  // namespace
}  // namespace fiar
