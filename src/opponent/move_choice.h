#pragma once

#include <functional>

#include "board/board.h"
#include "forms/picture_box.h"
#include "platform/platform.h"

namespace fiar {

/// Puts a stone of the side on move on the empty cell with the highest sum of both weights and notes it as
/// `lastMove`; equal sums are chosen among at random, with a generator seeded anew from the clock. The
/// weights must be those of the position. On a full board it calls `startNewGame` instead.
void playNextMove(Board& board, const Clock& clock, RandomGenerator& random,
                  const std::function<void()>& startNewGame);

/// Rings the best empty cells in green, all of them where several are equally good; none when the best sum is
/// not above 10000.
void hiliteNextMove(const Board& board, PictureBox& boardPic);

}  // namespace fiar
