#include "toolkit/currency.h"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace fiar {
namespace {

constexpr std::int64_t kUnit = 10000;

std::int64_t toTenThousandths(double value) {
  // The first double beyond the range of 64 bits.
  constexpr double kLimit = 0x1p63;
  const double scaled = std::nearbyint(value * static_cast<double>(kUnit));
  if (!(scaled >= -kLimit && scaled < kLimit)) throw std::overflow_error("a currency number is out of range");
  return static_cast<std::int64_t>(scaled);
}

}  // namespace

Currency::Currency(double value) : tenThousandths_(toTenThousandths(value)) {}

std::int32_t Currency::toInt32() const {
  std::int64_t whole = tenThousandths_ / kUnit;
  const std::int64_t twiceRest = tenThousandths_ % kUnit * 2;
  const std::int64_t size = twiceRest < 0 ? -twiceRest : twiceRest;
  if (size > kUnit || (size == kUnit && whole % 2 != 0)) whole += twiceRest < 0 ? -1 : 1;
  using Limits = std::numeric_limits<std::int32_t>;
  if (whole < Limits::min() || whole > Limits::max()) {
    throw std::overflow_error("a currency number does not fit in 32 bits");
  }
  return static_cast<std::int32_t>(whole);
}

}  // namespace fiar
