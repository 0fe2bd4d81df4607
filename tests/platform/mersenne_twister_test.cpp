#include "platform/mersenne_twister.h"

#include <gtest/gtest.h>

namespace fiar {
namespace {

TEST(MersenneTwister, StaysBelowOneAndRepeatsForTheSameSeedOnly) {
  MersenneTwister first;
  MersenneTwister same;
  MersenneTwister other;
  first.seed(43200.25);
  same.seed(43200.25);
  other.seed(43200.26);
  double sum = 0;
  int differing = 0;
  for (int i = 0; i < 10000; ++i) {
    const double value = first.next();
    ASSERT_TRUE(value >= 0 && value < 1 && value == same.next()) << value;
    differing += value != other.next() ? 1 : 0;
    sum += value;
  }
  EXPECT_GT(differing, 9900);
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

}  // namespace
}  // namespace fiar
