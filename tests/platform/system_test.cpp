#include "platform/mersenne_twister.h"

#include <gtest/gtest.h>

#include <array>

namespace fiar {
namespace {

TEST(MersenneTwister, StaysBelowOneAndRepeatsForTheSameSeedOnly) {
  std::array<MersenneTwister, 3> generators;
  const std::array seeds{43200.25, 43200.25, 43200.26};
  for (std::size_t i = 0; i < 3; ++i) generators[i].seed(seeds[i]);
  int differing = 0;
  double sum = 0;
  for (int i = 0; i < 10000; ++i) {
    const double value = generators[0].next();
    ASSERT_TRUE(value >= 0.0 && value < 1.0 && value == generators[1].next()) << value;
    differing += value != generators[2].next() ? 1 : 0;
    sum += value;
  }
  EXPECT_GT(differing, 9900);
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

}  // namespace
}  // namespace fiar
