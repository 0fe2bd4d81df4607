#include "board/drawing.h"

namespace fiar {
namespace {

constexpr Color kGridColor = 0x00999999;
// A stone leaves a tenth of its cell free.
constexpr double kStonePart = 0.9;
// How far the ring on the computer's last stone lies inside the rim, in twips.
constexpr double kLastMoveInset = 2;

constexpr std::size_t kFillSwatch = 0;
constexpr std::size_t kRimSwatch = 1;

/// The colour of a side's swatch; 0, which draws nothing, for nobody.
Color swatchColor(double code, const StoneColors& colors, std::size_t swatch) {
  if (code == kHuman) return colors.human[swatch].BackColor;
  if (code == kComputer) return colors.computer[swatch].BackColor;
  return 0;
}

void drawStone(const Board& board, PictureBox& boardPic, int column, int row, Color fill, Color rim) {
  // Deliberate: the colour decides, not the cell code, so a black swatch hides its side's stones.
  if (fill == 0) return;
  boardPic.FillColor = fill;
  drawCellCircle(board, boardPic, column, row, rim);
}

}  // namespace

void drawGrid(Board& board, PictureBox& boardPic) {
  const double width = boardPic.Width;
  const double height = boardPic.Height;
  board.cellWidth = width / board.boardCols;
  board.cellHeight = height / board.boardRows;
  boardPic.KeyStep = board.cellWidth;
  const auto right = static_cast<float>(width);
  const auto bottom = static_cast<float>(height);
  // Steps are added up rather than multiplied: whether the closing line is drawn depends on their sum.
  for (double x = 0; x <= width; x += board.cellWidth) {
    boardPic.Line(static_cast<float>(x), 0, static_cast<float>(x), bottom, kGridColor);
  }
  for (double y = 0; y <= height; y += board.cellHeight) {
    boardPic.Line(0, static_cast<float>(y), right, static_cast<float>(y), kGridColor);
  }
}

void drawBoard(const Board& board, const StoneColors& colors, PictureBox& boardPic) {
  boardPic.FillStyle = FillStyle::Solid;
  for (int column = 0; column < board.board.columns(); ++column) {
    for (int row = 0; row < board.board.rows(); ++row) {
      const double stone = board.board(column, row);
      drawStone(board, boardPic, column, row, swatchColor(stone, colors, kFillSwatch),
                swatchColor(stone, colors, kRimSwatch));
      const Color winner = swatchColor(board.winMarks(column, row), colors, kRimSwatch);
      drawStone(board, boardPic, column, row, winner, winner);
    }
  }
  boardPic.FillStyle = FillStyle::Transparent;
  if (board.lastMove.x == -1 || board.lastMove.y == -1) return;
  drawCellCircle(board, boardPic, board.lastMove.x, board.lastMove.y, kWhite, kLastMoveInset);
}

void drawMousePlayer(const Board& board, const StoneColors& colors, PictureBox& boardPic) {
  drawCellCircle(board, boardPic, board.srX, board.srY, swatchColor(board.player, colors, kFillSwatch));
}

void drawCellCircle(const Board& board, PictureBox& boardPic, double column, double row, Color color,
                    double inset) {
  const double x = column * board.cellWidth + board.cellWidth / 2;
  const double y = row * board.cellHeight + board.cellHeight / 2;
  const double radius = board.cellWidth / 2 * kStonePart - inset;
  boardPic.Circle(static_cast<float>(x), static_cast<float>(y), static_cast<float>(radius), color);
}

}  // namespace fiar
