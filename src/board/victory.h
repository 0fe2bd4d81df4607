#pragma once

#include <array>

#include "board/board.h"
#include "forms/controls.h"
#include "forms/picture_box.h"
#include "platform/regional_format.h"

namespace fiar {

/// Where the score is shown. Only refers to the controls.
struct ScoreDisplay {
  std::array<Label, 2>& scoreLabel;  ///< games won by the human and by the computer
  PictureBox& Picture2;              ///< the decoration that a ten-to-nil lead replaces
  const PictureBox& Picture3;        ///< holds the replacement
  const RegionalFormat& regional;
};

/// Looks for five stones of one side in an unbroken line. The first line in the order columns, rows,
/// directions (rising diagonal, horizontal, falling diagonal, vertical) wins: its five cells are marked, the
/// game ends (`player` becomes 0) and the winner's score rises, in the Board and on its label. Without such a
/// line all marks are cleared and nothing else changes.
void checkForVictory(Board& board, const ScoreDisplay& display);

}  // namespace fiar
