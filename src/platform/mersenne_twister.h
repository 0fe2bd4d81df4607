#pragma once

#include <bit>
#include <cstdint>
#include <random>

#include "platform/platform.h"

namespace fiar {

/// The program's source of random numbers. They are multiples of 2^-53, so the largest is still below 1.
class MersenneTwister final : public RandomGenerator {
public:
  void seed(double value) override { engine_.seed(std::bit_cast<std::uint64_t>(value)); }
  double next() override { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

private:
  std::mt19937_64 engine_;
};

}  // namespace fiar
