#pragma once

#include <array>

#include "board/board.h"
#include "forms/picture_box.h"

namespace fiar {

/// The colours of one side, read from the backgrounds of three small picture boxes: 0 the fill of its stones,
/// 1 their rim and the whole of a winning stone, 2 not used by the board.
using Swatches = std::array<PictureBox, 3>;

/// The swatches of both sides. Only refers to them: they are read anew for every stone, so that changing one
/// changes the stones at the next redraw.
struct StoneColors {
  const Swatches& human;
  const Swatches& computer;
};

/// Sets the cell metrics from the picture's size and the board's, and draws the grey lines between the cells
/// and around them.
void drawGrid(Board& board, PictureBox& boardPic);

/// Draws all stones, the winning line and the ring on the computer's last stone. Leaves the fill style
/// transparent. A stone whose fill is black (0) is not drawn.
void drawBoard(const Board& board, const StoneColors& colors, PictureBox& boardPic);

/// Draws the ring under the pointer in the colour of the side on move; black while no game is in progress.
void drawMousePlayer(const Board& board, const StoneColors& colors, PictureBox& boardPic);

/// Draws the outline of a stone in a cell, which may lie outside the board, `inset` twips smaller than a
/// stone; the inside follows the picture's fill style.
void drawCellCircle(const Board& board, PictureBox& boardPic, double column, double row, Color color,
                    double inset = 0);

}  // namespace fiar
