#pragma once

#include <optional>

#include "platform/text.h"

namespace fiar {

struct DateTime;

/// How numbers and dates are written on this machine: the user's regional format.
class RegionalFormat {
public:
  virtual ~RegionalFormat() = default;

  /// The character between the whole part and the decimals, for instance '.' or ','.
  virtual char16_t decimalSeparator() const = 0;
  /// Date and time in the user's short form.
  virtual Text dateTimeText(const DateTime& when) const = 0;

  /// The shortest decimal text of at most 15 significant digits; whole numbers below 1E15 have no decimal
  /// point, no grouping, and a sign only when negative. What is no finite number gives "inf", "-inf" or
  /// "nan".
  Text numberText(double value) const;
  /// The number that a text stands for: spaces around it are skipped and the text ends at its first NUL.
  /// Absent when anything else stands in it (grouping included), there is no digit, or a double cannot hold
  /// it.
  std::optional<double> number(TextView text) const;
};

}  // namespace fiar
