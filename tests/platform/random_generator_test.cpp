#include "platform/random_generator.h"

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
  int differing = 0;
  double sum = 0;
  for (int i = 0; i < 10000; ++i) {
    const double value = first.next();
    ASSERT_GE(value, 0.0);
    ASSERT_LT(value, 1.0);
    ASSERT_EQ(value, same.next());
    differing += value != other.next() ? 1 : 0;
    sum += value;
  }
  EXPECT_GT(differing, 9900);
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

}  // namespace
}  // namespace fiar
