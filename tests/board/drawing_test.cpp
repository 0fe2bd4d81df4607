#include "board/drawing.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/boards.h"

namespace fiar {
namespace {

constexpr Color kLightRed = 0x008080FF;
constexpr Color kDarkRed = 0x000000C0;
constexpr Color kLightBlue = 0x00FF8080;
constexpr Color kDarkBlue = 0x00C00000;

struct Drawing : testing::Test {
  Drawing() {
    boardPic.Width = boardPic.Height = 9960;
    human[0].BackColor = kLightRed;
    human[1].BackColor = kDarkRed;
    computer[0].BackColor = kLightBlue;
    computer[1].BackColor = kDarkBlue;
  }

  /// A circle in the row whose cells' centres have y 498.
  static DrawCommand circle(float x, float radius, Color rim, Color fill = kBlack) {
    return {DrawCommand::Kind::Circle, fill != kBlack, 1, rim, fill, x, 498, radius};
  }
  const std::vector<DrawCommand>& commands() const { return boardPic.drawing().commands; }

  PictureBox boardPic;
  Swatches human;
  Swatches computer;
  StoneColors colors{human, computer};
};

TEST_F(Drawing, GridHasAllLinesOfEverySize) {
  for (const int size : {10, 15, 20, 30}) {
    SCOPED_TRACE(size);
    Board board = test::emptyBoard(size);
    board.cellWidth = board.cellHeight = 0;
    boardPic.Cls();
    drawGrid(board, boardPic);
    EXPECT_EQ(board.cellWidth, 9960.0 / size);
    EXPECT_EQ(board.cellHeight, 9960.0 / size);
    std::vector<DrawCommand> lines;
    for (int i = 0; i <= size; ++i) {
      const auto at = static_cast<float>(board.cellWidth * i);
      lines.insert(lines.begin() + i, {.color = 0x999999, .x1 = at, .x2 = at, .y2 = 9960});
      lines.push_back({.color = 0x999999, .y1 = at, .x2 = 9960, .y2 = at});
    }
    EXPECT_EQ(commands(), lines);
  }
}

TEST_F(Drawing, StonesWinningLineAndLastMoveRing) {
  Board board = test::boardOf({"12"});
  board.winMarks(1, 0) = kComputer;
  board.lastMove = {1, 0};
  drawBoard(board, colors, boardPic);
  EXPECT_EQ(
      commands(),
      (std::vector{circle(498, 448.2F, kDarkRed, kLightRed), circle(1494, 448.2F, kDarkBlue, kLightBlue),
                   circle(1494, 448.2F, kDarkBlue, kDarkBlue), circle(1494, 446.2F, kWhite)}));
  EXPECT_EQ(boardPic.FillStyle, FillStyle::Transparent);
}

TEST_F(Drawing, BlackSwatchesHideWhatTheyColor) {
  Board board = test::boardOf({"12"});
  board.winMarks(0, 0) = kHuman;
  board.winMarks(1, 0) = kComputer;
  board.lastMove = {-1, 0};
  human[0].BackColor = kBlack;     // hides the human's stones, not the mark
  computer[1].BackColor = kBlack;  // hides the computer's mark, not its stones
  drawBoard(board, colors, boardPic);
  EXPECT_EQ(commands(),
            (std::vector{circle(498, 448.2F, kDarkRed, kDarkRed), circle(1494, 448.2F, kBlack, kLightBlue)}));
}

TEST_F(Drawing, PointerRingHasTheColorOfTheSideOnMove) {
  Board board = test::emptyBoard(30);
  board.srX = 29;
  board.srY = 1;
  for (const auto& [player, color] :
       {std::pair{kNobody, kBlack}, {kHuman, kLightRed}, {kComputer, kLightBlue}}) {
    boardPic.Cls();
    board.player = player;
    drawMousePlayer(board, colors, boardPic);
    EXPECT_EQ(commands(), std::vector{circle(29.5F * 332, 149.4F, color)}) << player;
  }
}

TEST(Rounding, GoesToTheNearestWithTiesToEvenAndSaturates) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const std::pair<double, std::int64_t> cases[]{
      {0.5, 0}, {1.5, 2}, {-1.5, -2}, {663.49, 663}, {1e300, 2147483647}, {-kInfinity, -2147483648},
      {kNan, 0}};
  for (const auto& [value, rounded] : cases) EXPECT_EQ(roundToEven(value), rounded) << value;
}

}  // namespace
}  // namespace fiar
