#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace fiar {

/// Cell codes; `Board::player` holds the same ones, 0 there meaning that no game is in progress.
inline constexpr double kNobody = 0;
inline constexpr double kHuman = 1;
inline constexpr double kComputer = 2;

/// How many stones in an unbroken line win.
inline constexpr int kWinningLength = 5;

/// The nearest integer, ties to even; saturates at the ends of the range, NaN gives 0.
std::int32_t roundToEven(double value);

/// A rectangle of doubles indexed (column, row) from 0, stored column by column.
class Grid {
public:
  /// Replaces the whole grid by one of this size (>= 0 each) in which every cell is 0.
  void reset(int columns, int rows);

  int columns() const { return columns_; }
  int rows() const { return rows_; }
  bool contains(std::int32_t column, std::int32_t row) const {
    return column >= 0 && column < columns_ && row >= 0 && row < rows_;
  }

  /// A cell; the caller keeps to contains().
  double& operator()(int column, int row) {
    revision_ = ++accesses_;
    return cells_[index(column, row)];
  }
  double operator()(int column, int row) const { return cells_[index(column, row)]; }
  /// The cells of a column, one for each row; raises the revision once for all of them.
  double* cellsOf(int column) { return &(*this)(column, 0); }

  /// Changes with every access by which a cell may be written to. Grids of one revision have equal cells.
  std::uint64_t revision() const { return revision_; }

  /// Rows and cells determine the columns; the revision does not count.
  bool operator==(const Grid& other) const { return rows_ == other.rows_ && cells_ == other.cells_; }

private:
  std::size_t index(int column, int row) const {
    return static_cast<std::size_t>(column) * static_cast<std::size_t>(rows_) + static_cast<std::size_t>(row);
  }

  int columns_ = 0;
  int rows_ = 0;
  std::vector<double> cells_;
  std::uint64_t revision_ = 0;
  inline static std::uint64_t accesses_ = 0;  ///< to all grids, so that no two of them get the same revision
};

/// A cell by column and row. -1 in either field stands for no cell.
struct CellPoint {
  double x = 0;
  double y = 0;

  bool operator==(const CellPoint&) const = default;
};

inline constexpr CellPoint kNoCell{-1, -1};

/// The game's whole state. All quantities are doubles, also where they only hold whole numbers.
struct Board {
  Grid board;           ///< the stone in each cell (cell code)
  Grid winMarks;        ///< the winner's code on the five cells of the winning line
  Grid attackWeights;   ///< evaluation of every cell for the side on move
  Grid defenceWeights;  ///< evaluation of every cell for the other side
  Grid spareGrid;       ///< replaced with every new game, otherwise unused

  double boardCols = 0;  ///< the size chosen from the list, in cells
  double boardRows = 0;  ///< always equal to boardCols
  double cellWidth = 0;  ///< twips; set whenever the lines are drawn
  double cellHeight = 0;
  double srX = 0;  ///< column under the pointer; outside the board while the pointer is dragged off it
  double srY = 0;  ///< row under the pointer

  double player = kNobody;  ///< the side on move
  double lastMoveTime = 0;  ///< seconds since midnight when a game began or a click placed a stone
  double lastCalcTime = 0;  ///< differs from lastMoveTime until the evaluation is refreshed, which sets both
  std::array<double, 2> score{};  ///< games won by the human and by the computer
  bool firstMoveFlag = false;     ///< decides who opens the next game; inverted by every new game
  bool soundOn = false;
  CellPoint lastMove;  ///< the computer's most recent stone; kept across new games until it plays again

  int columns() const { return roundToEven(boardCols); }
  int rows() const { return roundToEven(boardRows); }
};

/// Replaces a grid by an empty one of the board's size.
void resetGrid(const Board& board, Grid& grid);

}  // namespace fiar
