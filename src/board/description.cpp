#include "board/description.h"

namespace fiar {
namespace {

constexpr double kOutside = -1;

/// The stone in a cell; kOutside for a cell outside the board.
double stoneIn(const Board& board, CellPoint cell) {
  const std::int32_t column = roundToEven(cell.x);
  const std::int32_t row = roundToEven(cell.y);
  return board.board.contains(column, row) ? board.board(column, row) : kOutside;
}

TextView nameOf(double stone) {
  if (stone == kNobody) return u"empty";
  return stone == kHuman ? u"red" : u"blue";
}

}  // namespace

Text BoardDescription::update(const Board& board) {
  const CellPoint ring{board.srX, board.srY};
  const News news = newsOf(board);
  newsAreFresh_ = news != news_ || (newsAreFresh_ && ring == ring_);
  news_ = news;
  score_ = board.score;
  ring_ = ring;

  if (newsAreFresh_ && news.winner != kNobody) return Text(result());
  Text text;
  if (newsAreFresh_ && news.computersMove != kNoCell) {
    text = u"Blue to column " + placeOf(news.computersMove) + u". ";
  }
  const double stone = stoneIn(board, ring);
  if (stone == kOutside) return text + u"Outside the board";
  return (text + u"Column " + placeOf(ring) + u", ").append(nameOf(stone));
}

TextView BoardDescription::result() const {
  if (news_.winner == kNobody) return {};
  return news_.winner == kHuman ? u"You won" : u"The computer won";
}

BoardDescription::News BoardDescription::newsOf(const Board& board) const {
  if (board.player == kNobody) {
    // A game that has ended has raised a score.
    if (board.score[0] > score_[0]) return {.winner = kHuman};
    if (board.score[1] > score_[1]) return {.winner = kComputer};
    return {.winner = news_.winner};
  }
  const bool moved = stoneIn(board, board.lastMove) == kComputer;
  return {.computersMove = moved ? board.lastMove : kNoCell};
}

Text BoardDescription::placeOf(CellPoint cell) const {
  return regional_.numberText(cell.x + 1) + u", row " + regional_.numberText(cell.y + 1);
}

}  // namespace fiar
