#pragma once

#include <string_view>

#include "platform/error.h"
#include "toolkit/toolkit.h"

namespace fiar {

/// How many patterns of own stones the eight neighbours of a cell on one line can make.
inline constexpr int kPatternCount = 256;

/// The number of the resource that holds the pattern table.
inline constexpr unsigned kPatternTableResource = 102;

/// The table of pattern weights is missing or cannot be read; the text names the resource.
class PatternTableError : public Error {
public:
  explicit PatternTableError(TextView reason);
};

/// The key of pattern `n` (0 to 255): the digits of n in binary, "1" for a stone, with "P" for the cell
/// itself in the middle. The first digit is the farthest cell before it, the last one the farthest after it.
Text patternKey(int n);

/// Stores every weight of a table under its key. The table is text in the ANSI code page: lines of key, comma
/// and weight with CR LF between them; what follows a NUL in a weight is ignored. Throws PatternTableError
/// for a line without a comma or with a weight that is no number.
void loadPatternTable(std::string_view bytes, Toolkit& toolkit);

/// Computes the 256 weights anew and appends them as lines of a table to the text file "spremenljivka.txt" in
/// the application folder. A file that is there is never shortened.
void genUtezi(Toolkit& toolkit);

}  // namespace fiar
