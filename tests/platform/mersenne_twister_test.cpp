#include "platform/mersenne_twister.h"

#include <gtest/gtest.h>

#include <array>

namespace fiar {
namespace {

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

}  // namespace
}  // namespace fiar
