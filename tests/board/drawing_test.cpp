#include "board/drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "support/boards.h"

namespace fiar {
namespace {

using Kind = DrawCommand::Kind;

constexpr Color kLightRed = 0x008080FF;
constexpr Color kDarkRed = 0x000000C0;
constexpr Color kLightBlue = 0x00FF8080;
constexpr Color kDarkBlue = 0x00C00000;

class Drawing : public testing::Test {
protected:
  Drawing() {
    boardPic.Width = 9960;
    boardPic.Height = 9960;
    human[0].BackColor = kLightRed;
    human[1].BackColor = kDarkRed;
    computer[0].BackColor = kLightBlue;
    computer[1].BackColor = kDarkBlue;
  }

  const std::vector<DrawCommand>& commands() const { return boardPic.drawing().commands; }
  StoneColors colors() const { return {human, computer}; }

  PictureBox boardPic;
  Swatches human;
  Swatches computer;
};

TEST_F(Drawing, GridHasAllLinesOfEverySize) {
  for (const int size : {10, 15, 20, 30}) {
    SCOPED_TRACE(size);
    Board board = test::emptyBoard(size);
    boardPic.Cls();
    drawGrid(board, boardPic);
    EXPECT_EQ(board.cellWidth, 9960.0 / size);
    EXPECT_EQ(board.cellHeight, 9960.0 / size);
    ASSERT_EQ(commands().size(), 2U * static_cast<unsigned>(size + 1));
    const DrawCommand& lastVertical = commands()[static_cast<std::size_t>(size)];
    const DrawCommand& lastHorizontal = commands().back();
    EXPECT_EQ(lastVertical.x1, 9960);
    EXPECT_EQ(lastVertical.x2, 9960);
    EXPECT_EQ(lastVertical.y2, 9960);
    EXPECT_EQ(lastHorizontal.y1, 9960);
    EXPECT_TRUE(std::all_of(commands().begin(), commands().end(), [](const DrawCommand& command) {
      return command.kind == Kind::Line && command.color == 0x999999;
    }));
  }
}

TEST_F(Drawing, StonesWinningLineAndLastMoveRing) {
  Board board = test::boardOf({"12"});
  board.winMarks(1, 0) = kComputer;
  board.lastMove = {1, 0};
  drawBoard(board, colors(), boardPic);
  ASSERT_EQ(commands().size(), 4U);
  struct Expected {
    float x;
    bool filled;
    Color fill;
    Color rim;
    float radius;
  };
  const Expected expected[]{{498, true, kLightRed, kDarkRed, 448.2F},
                            {1494, true, kLightBlue, kDarkBlue, 448.2F},
                            {1494, true, kDarkBlue, kDarkBlue, 448.2F},
                            {1494, false, kBlack, kWhite, 446.2F}};
  for (std::size_t i = 0; i < commands().size(); ++i) {
    SCOPED_TRACE(i);
    const DrawCommand& command = commands()[i];
    EXPECT_EQ(command.kind, Kind::Circle);
    EXPECT_EQ(command.x1, expected[i].x);
    EXPECT_EQ(command.y1, 498);
    EXPECT_FLOAT_EQ(command.x2, expected[i].radius);
    EXPECT_EQ(command.filled, expected[i].filled);
    EXPECT_EQ(command.fill, expected[i].fill);
    EXPECT_EQ(command.color, expected[i].rim);
  }
  EXPECT_EQ(boardPic.FillStyle, FillStyle::Transparent);
}

TEST_F(Drawing, BlackSwatchesHideWhatTheyColor) {
  Board board = test::boardOf({"12"});
  board.winMarks(0, 0) = kHuman;
  board.winMarks(1, 0) = kComputer;
  board.lastMove = {-1, 0};
  human[0].BackColor = kBlack;     // hides the human's stones, not the mark
  computer[1].BackColor = kBlack;  // hides the computer's mark, not its stones
  drawBoard(board, colors(), boardPic);
  ASSERT_EQ(commands().size(), 2U);
  EXPECT_EQ(commands()[0].fill, kDarkRed);
  EXPECT_EQ(commands()[1].fill, kLightBlue);
  EXPECT_EQ(commands()[1].color, kBlack);
}

TEST_F(Drawing, PointerRingHasTheColorOfTheSideOnMove) {
  Board board = test::emptyBoard(30);
  board.srX = 29;
  board.srY = 2;
  for (const auto& [player, color] :
       {std::pair{kNobody, kBlack}, std::pair{kHuman, kLightRed}, std::pair{kComputer, kLightBlue}}) {
    boardPic.Cls();
    board.player = player;
    drawMousePlayer(board, colors(), boardPic);
    ASSERT_EQ(commands().size(), 1U);
    EXPECT_EQ(commands()[0].color, color);
    EXPECT_FALSE(commands()[0].filled);
    EXPECT_EQ(commands()[0].x1, 29.5F * 332);
    EXPECT_EQ(commands()[0].y1, 2.5F * 332);
    EXPECT_FLOAT_EQ(commands()[0].x2, 149.4F);
  }
}

TEST(Rounding, GoesToTheNearestWithTiesToEvenAndSaturates) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::pair<double, std::int32_t> cases[]{{0.5, 0},
                                                {1.5, 2},
                                                {2.5, 2},
                                                {-0.5, 0},
                                                {-1.5, -2},
                                                {663.49, 663},
                                                {1e300, 2147483647},
                                                {-kInfinity, -2147483647 - 1},
                                                {std::numeric_limits<double>::quiet_NaN(), 0}};
  for (const auto& [value, rounded] : cases) EXPECT_EQ(roundToEven(value), rounded) << value;
}

}  // namespace
}  // namespace fiar
