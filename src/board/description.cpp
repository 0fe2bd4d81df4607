#include "board/description.h"

#include <array>

namespace fiar {
namespace {

/// The stone in a cell; nobody's for a cell outside the board.
double stoneIn(const Board& board, CellPoint cell) {
  const std::int32_t column = roundToEven(cell.x);
  const std::int32_t row = roundToEven(cell.y);
  return board.board.contains(column, row) ? board.board(column, row) : kNobody;
}

/// The side whose line is marked; nobody where none is.
double markedWinner(const Board& board) {
  for (int column = 0; column < board.winMarks.columns(); ++column) {
    for (int row = 0; row < board.winMarks.rows(); ++row) {
      if (board.winMarks(column, row) != kNobody) return board.winMarks(column, row);
    }
  }
  return kNobody;
}

TextView nameOf(double stone) {
  if (stone == kNobody) return u"empty";
  return stone == kHuman ? u"red" : u"blue";
}

}  // namespace

const Text& BoardDescription::update(const Board& board) {
  const CellPoint ring{board.srX, board.srY};
  const News news = newsOf(board);
  newsAreFresh_ = news != news_ || (newsAreFresh_ && ring == ring_);
  news_ = news;
  ring_ = ring;

  if (newsAreFresh_ && news.winner != kNobody) return text_ = result();
  text_.clear();
  if (newsAreFresh_ && news.computersMove != kNoCell) {
    addCell(u"Blue to column ", news.computersMove);
    text_ += u". ";
  }
  if (!board.board.contains(roundToEven(ring.x), roundToEven(ring.y))) return text_ += u"Outside the board";
  addCell(u"Column ", ring);
  return text_.append(u", ").append(nameOf(stoneIn(board, ring)));
}

TextView BoardDescription::result() const {
  if (news_.winner == kNobody) return {};
  return news_.winner == kHuman ? u"You won" : u"The computer won";
}

BoardDescription::News BoardDescription::newsOf(const Board& board) {
  if (board.player == kNobody) return {.winner = markedWinner(board)};
  const bool moved = board.player == kHuman && stoneIn(board, board.lastMove) == kComputer;
  return {.computersMove = moved ? board.lastMove : kNoCell};
}

void BoardDescription::addCell(TextView column, CellPoint cell) {
  std::array<char16_t, RegionalFormat::kMaxNumberLength> number{};
  text_.append(column).append(regional_.numberText(cell.x + 1, number));
  text_.append(u", row ").append(regional_.numberText(cell.y + 1, number));
}

}  // namespace fiar
