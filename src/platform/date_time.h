#pragma once

namespace fiar {

/// A local date and time of the proleptic Gregorian calendar, to the second.
struct DateTime {
  int year = 1899;
  int month = 12;  ///< 1 to 12
  int day = 30;    ///< 1 to 31
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59
  int second = 0;  ///< 0 to 59

  bool operator==(const DateTime&) const = default;
};

/// The empty date: day zero of the program's date system, midnight.
inline constexpr DateTime kEmptyDate{};

}  // namespace fiar
