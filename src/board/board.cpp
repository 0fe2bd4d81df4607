#include "board/board.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fiar {

std::int32_t roundToEven(double value) {
  if (std::isnan(value)) return 0;
  using Limits = std::numeric_limits<std::int32_t>;
  const double limited =
      std::clamp(value, static_cast<double>(Limits::min()), static_cast<double>(Limits::max()));
  // The default rounding mode, which the program never changes, rounds ties to even.
  return static_cast<std::int32_t>(std::nearbyint(limited));
}

void Grid::reset(int columns, int rows) {
  revision_ = ++accesses_;
  columns_ = columns;
  rows_ = rows;
  cells_.assign(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), 0.0);
}

void resetGrid(const Board& board, Grid& grid) {
  grid.reset(board.columns(), board.rows());
}

}  // namespace fiar
