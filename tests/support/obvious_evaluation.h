#pragma once

#include "board/board.h"
#include "toolkit/toolkit.h"

namespace fiar::test {

/// The evaluation as one would write it down first: a text for every cell and direction, looked up in the
/// variable store. Slow, and the measure of what the product's evaluation gives.
void obviousEvaluation(double side, Board& board, Toolkit& toolkit);

}  // namespace fiar::test
