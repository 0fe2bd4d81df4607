#include "opponent/weight_overlay.h"

#include <array>
#include <charconv>

namespace fiar {
namespace {

// Weights up to this are of no interest.
constexpr double kDisplayThreshold = 10'000;
// Where the numbers stand in their cell, in twips.
constexpr double kLeftInset = 5;
constexpr std::array<double, 3> kTopInsets{5, 15, 25};

Text wholeNumberText(double value) {
  // As many digits as a double can have before the decimal point, and a sign.
  std::array<char, 310> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 0);
  return {buffer.data(), end};
}

}  // namespace

void drawutezi(const Board& board, PictureBox& boardPic) {
  for (int column = 0; column < board.board.columns(); ++column) {
    for (int row = 0; row < board.board.rows(); ++row) {
      const double attack = board.attackWeights(column, row);
      const double defence = board.defenceWeights(column, row);
      const std::array<double, 3> values{attack, defence, attack + defence};
      for (std::size_t line = 0; line < values.size(); ++line) {
        boardPic.CurrentX = static_cast<float>(column * board.cellWidth + kLeftInset);
        boardPic.CurrentY = static_cast<float>(row * board.cellHeight + kTopInsets[line]);
        if (values[line] > kDisplayThreshold) boardPic.Print(wholeNumberText(values[line]));
      }
    }
  }
}

}  // namespace fiar
