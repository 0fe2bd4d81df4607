#include "toolkit/currency.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace fiar {
namespace {

TEST(Currency, BecomesTheNearestWholeNumberWithTiesToEven) {
  struct Case {
    double value;
    std::int32_t whole;
  };
  for (const Case& c :
       {Case{0, 0}, Case{0.5, 0}, Case{0.5001, 1}, Case{1.5, 2}, Case{2.5, 2}, Case{-0.5, 0}, Case{-1.5, -2},
        Case{-2.4999, -2}, Case{2147483647.4999, 2147483647}, Case{-2147483648.5, -2147483647 - 1}}) {
    EXPECT_EQ(Currency(c.value).toInt32(), c.whole) << c.value;
  }
  EXPECT_THROW(Currency(2147483647.5).toInt32(), std::overflow_error);
  EXPECT_THROW(Currency(-2147483648.5001).toInt32(), std::overflow_error);
}

TEST(Currency, KeepsFourDecimalsWithin64Bits) {
  EXPECT_EQ(Currency(0.03125), Currency(0.0312));
  EXPECT_EQ(Currency(0.09375), Currency(0.0938));
  EXPECT_LT(Currency(0.0001), Currency(0.0002));
  EXPECT_LT(Currency(922337203685477), Currency(922337203685477.5));
  for (const double bad : {922337203685478.0, -922337203685478.0, std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(Currency{bad}, std::overflow_error) << bad;
  }
}

}  // namespace
}  // namespace fiar
