#pragma once

#include "board/board.h"
#include "forms/picture_box.h"

namespace fiar {

/// Prints the weights above 10000 into the cells, for whoever wants to know why the computer plays where it
/// does: the attack, the defence and their sum below each other, as whole numbers. The grids must have the
/// board's size.
void drawutezi(const Board& board, PictureBox& boardPic);

}  // namespace fiar
