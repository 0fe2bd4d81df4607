#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fiar {

/// Text as the program holds it: UTF-16 code units on every platform. Lengths and positions count code units.
using Text = std::u16string;
using TextView = std::u16string_view;

/// The capital letter of one character by the system's simple (one to one) case mapping; a character without
/// one, and half of a surrogate pair, is returned as it is. A letter beyond ASCII never becomes an ASCII one.
char16_t toUpper(char16_t character);

/// Turns every character into its capital letter by the system's own one-to-one mapping, without regard to
/// the user's language. Characters stand for themselves; halves of surrogate pairs may become anything.
void makeUpperByHost(std::span<char16_t> characters);

/// The same for a whole text; the length does not change.
Text toUpper(TextView text);

/// Whether both texts have the same length and the same capital letters.
bool equalIgnoringCase(TextView left, TextView right);

/// A hash that is equal for texts that equalIgnoringCase() finds equal.
std::size_t hashIgnoringCase(TextView text);

/// The text without leading and trailing spaces (U+0020 only: tabs and line ends stay).
TextView trimSpaces(TextView text);

/// The pieces of a text between the separators (not empty), empty ones included; at least one. They refer to
/// the text.
std::vector<TextView> split(TextView text, TextView separator);

/// The text with `by` in the place of each `what` (not empty), from left to right and without overlaps.
Text replaced(TextView text, TextView what, TextView by);

}  // namespace fiar
