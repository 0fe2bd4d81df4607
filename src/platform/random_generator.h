#pragma once

#include <random>

namespace fiar {

/// A seedable source of uniform random numbers.
class RandomGenerator {
public:
  virtual ~RandomGenerator() = default;

  /// Starts a new sequence; the same seed gives the same sequence.
  virtual void seed(double value) = 0;
  /// The next number, 0 <= r < 1.
  virtual double next() = 0;
};

/// The program's generator: a Mersenne Twister.
class MersenneTwister final : public RandomGenerator {
public:
  void seed(double value) override;
  double next() override;

private:
  std::mt19937_64 engine_;
};

}  // namespace fiar
