#include "platform/regional_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/fake_platform.h"

namespace fiar {
namespace {

using Limits = std::numeric_limits<double>;

TEST(NumberText, IsShortAndRegional) {
  struct Case {
    double value;
    TextView text;
  };
  test::FakeRegionalFormat format;
  format.separator = u',';
  for (const Case& c : {
           Case{0, u"0"},
           Case{-0.0, u"0"},
           Case{-1, u"-1"},
           Case{5004492, u"5004492"},
           Case{999999999999999, u"999999999999999"},
           Case{1e15, u"1E+15"},
           Case{2.5, u"2,5"},
           Case{-0.1, u"-0,1"},
           Case{1.0 / 3, u"0,333333333333333"},
           Case{0.0001, u"0,0001"},
           Case{0.00001, u"1E-05"},
           Case{-Limits::max(), u"-1,79769313486232E+308"},
           Case{-Limits::denorm_min(), u"-4,94065645841247E-324"},
           Case{Limits::infinity(), u"inf"},
           Case{-Limits::infinity(), u"-inf"},
           Case{Limits::quiet_NaN(), u"nan"},
           Case{-Limits::quiet_NaN(), u"nan"},
       }) {
    EXPECT_EQ(format.numberText(c.value), c.text) << c.value;
  }
}

TEST(NumberFromText, FollowsTheSeparator) {
  struct Case {
    TextView text;
    std::optional<double> point;  ///< where the separator is a point
    std::optional<double> comma;  ///< where it is a comma
  };
  const std::optional<double> none;
  for (const Case& c : {
           Case{u"0", 0, 0},
           Case{u"5004492", 5004492, 5004492},
           Case{u"  -12  ", -12, -12},
           Case{u"+7", 7, 7},
           Case{u"1.5", 1.5, none},
           Case{u"1,5", none, 1.5},
           Case{u".5", 0.5, none},
           Case{u"5,", none, 5},
           Case{u"1e3", 1000, 1000},
           Case{u"2,5E-1", none, 0.25},
           Case{TextView(u"5004492\0\0", 9), 5004492, 5004492},
           Case{TextView(u"3 \0x", 4), 3, 3},
           Case{TextView(u"\0"
                         u"3",
                         2),
                none, none},
           Case{u"", none, none},
           Case{u"   ", none, none},
           Case{u"-", none, none},
           Case{u"+-1", none, none},
           Case{u"++1", none, none},
           Case{u"1 2", none, none},
           Case{u"12x", none, none},
           Case{u"0x10", none, none},
           Case{u"1e", none, none},
           Case{u"1.5.5", none, none},
           Case{u"1.000,5", none, none},
           Case{u"inf", none, none},
           Case{u"nan", none, none},
           Case{u"1E+309", none, none},
           Case{u"\u0661", none, none},
       }) {
    test::FakeRegionalFormat format;
    EXPECT_EQ(format.number(c.text), c.point) << toUtf8(c.text);
    format.separator = u',';
    EXPECT_EQ(format.number(c.text), c.comma) << toUtf8(c.text);
  }
}

TEST(SystemRegionalFormat, ReadsItsOwnNumbersAndShowsEveryPartOfADate) {
  const RegionalFormat& format = systemRegionalFormat();
  for (const double value : {0.0, -2.5, 1001196.0, 1e-300}) {
    EXPECT_EQ(format.number(format.numberText(value)), value);
  }
  const DateTime date{2024, 2, 28, 13, 47, 58};
  const Text text = format.dateTimeText(date);
  for (const TextView part : {u"24", u"2", u"28", u"47", u"58"}) {
    EXPECT_NE(text.find(part), Text::npos) << toUtf8(text);
  }
  EXPECT_NE(format.dateTimeText({2024, 2, 28, 14, 47, 58}), text);
  EXPECT_FALSE(format.dateTimeText(kEmptyDate).empty());
}

}  // namespace
}  // namespace fiar
