#include "platform/random_generator.h"

#include <bit>
#include <cstdint>

namespace fiar {

void MersenneTwister::seed(double value) {
  engine_.seed(std::bit_cast<std::uint64_t>(value));
}

double MersenneTwister::next() {
  // The top 53 bits: every result is a multiple of 2^-53, so the largest is still below 1.
  return static_cast<double>(engine_() >> 11) * 0x1p-53;
}

}  // namespace fiar
