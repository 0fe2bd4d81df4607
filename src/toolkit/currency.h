#pragma once

#include <cstdint>

namespace fiar {

/// A fixed-point number with four decimals in 64 bits: whole ten-thousandths, from -922337203685477.5808 to
/// 922337203685477.5807.
class Currency {
public:
  /// The nearest number with four decimals, the even one of two equally near. Throws std::overflow_error for
  /// what is out of range or no number. Implicit, so that plain numbers can be handed over.
  Currency(double value);  // NOLINT(google-explicit-constructor)

  /// The nearest whole number, the even one of two equally near. Throws std::overflow_error where that does
  /// not fit in 32 bits.
  std::int32_t toInt32() const;

private:
  std::int64_t tenThousandths_;
};

}  // namespace fiar
