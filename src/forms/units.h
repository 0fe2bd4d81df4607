#pragma once

namespace fiar {

// Forms and all that is in them are measured in twips, a twentieth of a point.
inline constexpr double kTwipsPerInch = 1440;
inline constexpr double kTwipsPerPoint = 20;
/// At 96 dots per inch, the resolution that forms are designed for.
inline constexpr double kTwipsPerPixel = 15;

}  // namespace fiar
