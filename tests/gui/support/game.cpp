#include "gui/support/game.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace fiar::gui {
namespace {

constexpr int kSizes = 4;
// A stone's rim is at nine tenths of the way to the edge of its cell.
constexpr double kRimPart = 0.45;

/// How much of a colour there is in a pixel of the board, from 0 to 1.
double partOf(std::uint32_t color, std::uint32_t pixel) {
  double product = 0;
  double square = 0;
  for (const int shift : {0, 8, 16}) {
    const auto fromBoard = [&](std::uint32_t value) {
      return static_cast<double>((value >> shift) & 0xFF) -
             static_cast<double>((kBoardColor >> shift) & 0xFF);
    };
    product += fromBoard(pixel) * fromBoard(color);
    square += fromBoard(color) * fromBoard(color);
  }
  return product / square;
}

char meaningOf(std::uint32_t color) {
  constexpr std::array<std::pair<std::uint32_t, char>, 5> kMeanings{
      {{kBoardColor, '.'}, {kLightRed, 'r'}, {kLightBlue, 'b'}, {kDarkRed, 'R'}, {kDarkBlue, 'B'}}};
  const auto* const found = std::find_if(kMeanings.begin(), kMeanings.end(),
                                         [&](const auto& meaning) { return meaning.first == color; });
  return found == kMeanings.end() ? '?' : found->second;
}

/// Checks a line of pixels that runs across the grid through the middle of cells.
void expectSharpLines(const Picture& line, int cells) {
  const int length = std::max(line.width, line.height);
  const auto pixelAt = [&](int i) { return line.width == 1 ? line.at(0, i) : line.at(i, 0); };
  std::vector<std::pair<double, int>> lines;  // middle and width
  for (int i = 0; i < length; ++i) {
    const std::uint32_t pixel = pixelAt(i);
    ASSERT_TRUE(pixel == kGridColor || pixel == kBoardColor) << "pixel " << i << " is " << pixel;
    if (pixel != kGridColor) continue;
    if (i == 0 || pixelAt(i - 1) != kGridColor) lines.emplace_back(i - 0.5, 0);
    lines.back().first += 0.5;
    ++lines.back().second;
  }
  ASSERT_EQ(lines.size(), static_cast<std::size_t>(cells) + 1);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const int width = lines[0].second;
    EXPECT_EQ(lines[i].second, width) << "width of line " << i;
    const double place = length * static_cast<double>(i) / cells;
    // The outer lines are moved inside.
    EXPECT_NEAR(lines[i].first + 0.5, place, i == 0 || i + 1 == lines.size() ? width : 1) << "line " << i;
  }
}

}  // namespace

Desktop& Desktop::get() {
  static Desktop desktop;
  return desktop;
}

std::filesystem::path gameProgram() {
  const char* const named = std::getenv("FIAR_GAME");
  return named == nullptr ? FIAR_GAME : named;
}

int stones(const Position& position) {
  return static_cast<int>(std::count_if(position.begin(), position.end(),
                                        [](char meaning) { return std::isalpha(meaning) != 0; }));
}

std::vector<Cell> cellsOf(const Position& position, char meaning) {
  std::vector<Cell> cells;
  Cell cell;
  for (const char here : position) {
    if (here == meaning) cells.push_back(cell);
    cell = here == '\n' ? Cell{0, cell.row + 1} : Cell{cell.column + 1, cell.row};
  }
  return cells;
}

char meaningAt(const Position& position, Cell cell) {
  const auto width = position.find('\n') + 1;
  return position.at(static_cast<std::size_t>(cell.row) * width + static_cast<std::size_t>(cell.column));
}

Program::Program(const std::filesystem::path& file, const std::vector<std::string>& unset)
    : process_(Desktop::get().probe.start(file, unset)) {}

Program::~Program() {
  Desktop::get().screen.releaseAll();
  Desktop::get().probe.stop(process_);
}

std::vector<WindowInfo> Program::windows() const {
  return Desktop::get().probe.windows(process_);
}

WindowInfo Program::control(const std::string& kind, const std::string& text) const {
  const auto all = windows();
  const auto found = std::find_if(all.begin(), all.end(), [&](const WindowInfo& window) {
    return window.visible && window.kind == kind && (text.empty() || window.text == text);
  });
  return found == all.end() ? WindowInfo{} : *found;
}

long Program::exitCode() const {
  std::optional<long> code;
  EXPECT_TRUE(eventually([&] {
    code = Desktop::get().probe.exitCode(process_);
    return code.has_value();
  })) << "the program does not end";
  return code.value_or(-1);
}

Game::Game(const std::filesystem::path& file, const std::vector<std::string>& unset) : Program(file, unset) {
  EXPECT_TRUE(eventually([&] { return startIsShown(); })) << "the game's window does not come";
  locate();
  // A window is there before its picture is.
  EXPECT_TRUE(eventually([&] { return position().find_first_not_of(".\n") == Position::npos; }))
      << position();
}

WindowInfo Game::window() const {
  const auto all = windows();
  const auto found = std::find_if(all.begin(), all.end(), [](const WindowInfo& window) {
    return window.container == 0 && window.text.starts_with("Five in a Row");
  });
  return found == all.end() ? WindowInfo{} : *found;
}

std::vector<std::string> Game::scores() const {
  std::vector<std::pair<int, std::string>> labels;
  for (const WindowInfo& window : windows()) {
    if (window.kind == "Static") labels.emplace_back(window.area.left, window.text);
  }
  std::sort(labels.begin(), labels.end());
  std::vector<std::string> texts;
  texts.reserve(labels.size());
  for (const auto& label : labels) texts.push_back(label.second);
  return texts;
}

void Game::locate() {
  board_ = {};
  for (const WindowInfo& window : windows()) {
    const Area& area = window.area;
    if (window.kind == "ComboBox") size_ = std::atoi(window.text.c_str());
    // The board is the largest square.
    if (window.visible && area.width() == area.height() && area.width() > board_.width()) board_ = area;
  }
}

Position Game::position() const {
  const Picture picture = Desktop::get().screen.look(board_);
  Position position;
  if (picture.width != board_.width() || picture.height != board_.height()) return position;
  for (int row = 0; row < size_; ++row) {
    for (int column = 0; column < size_; ++column) {
      const Point centre = centreOf({column, row});
      position += meaningOf(picture.at(centre.x - board_.left, centre.y - board_.top));
    }
    position += '\n';
  }
  return position;
}

bool Game::ringIsAt(Cell cell, std::uint32_t color) const {
  // Where the ring is farthest from the grid. At a small scale no pixel has its colour alone.
  constexpr double kEnough = 0.35;
  const Point centre = centreOf(cell);
  const int rim = static_cast<int>(std::lround(std::sqrt(0.5) * kRimPart * board_.width() / size_));
  const Picture picture = Desktop::get().screen.look(
      {centre.x + rim - 1, centre.y + rim - 1, centre.x + rim + 2, centre.y + rim + 2});
  return std::any_of(picture.pixels.begin(), picture.pixels.end(),
                     [&](std::uint32_t pixel) { return partOf(color, pixel) > kEnough; });
}

Point Game::centreOf(Cell cell) const {
  const auto centre = [&](int index) { return (2 * index + 1) * board_.width() / (2 * size_); };
  return {board_.left + centre(cell.column), board_.top + centre(cell.row)};
}

void Game::pressStart() {
  Desktop::get().screen.click(control("Button", "Start").area.centre());
  EXPECT_TRUE(eventually([&] { return !startIsShown(); })) << "\"Start\" does not start a game";
}

void Game::chooseSize(int index) {
  constexpr std::array<const char*, kSizes> kTexts{"10 x 10", "15 x 15", "20 x 20", "30 x 30"};
  Desktop& desktop = Desktop::get();
  desktop.screen.click(control("ComboBox").area.centre());
  EXPECT_TRUE(eventually([&] { return control("ComboLBox").number != 0; })) << "the list does not open";
  const Area list = control("ComboLBox").area;
  desktop.screen.click({list.centre().x, list.top + (2 * index + 1) * list.height() / (2 * kSizes)});
  EXPECT_TRUE(eventually([&] {
    return control("ComboLBox").number == 0 &&
           control("ComboBox").text == kTexts.at(static_cast<std::size_t>(index));
  })) << "the list does not take the choice";
  locate();
}

void Game::pointAt(Cell cell, std::uint32_t ring) const {
  Desktop::get().screen.move(centreOf(cell));
  EXPECT_TRUE(eventually([&] { return ringIsAt(cell, ring); }))
      << "no ring round cell " << cell.column << ", " << cell.row;
}

Position Game::play(Cell cell) {
  const Position before = position();
  Desktop::get().screen.click(centreOf(cell));
  Position after;
  EXPECT_TRUE(eventually([&] {
    after = position();
    return stones(after) == stones(before) + 2;
  })) << "no stone, or no answer, at "
      << cell.column << ", " << cell.row << "; before:\n"
      << before << "now:\n"
      << after;
  return after;
}

void expectSharpGrid(const Game& game) {
  const Area& board = game.board();
  const Point through = game.centreOf({1, 1});
  const Screen& screen = Desktop::get().screen;
  expectSharpLines(screen.look({board.left, through.y, board.right, through.y + 1}), game.size());
  expectSharpLines(screen.look({through.x, board.top, through.x + 1, board.bottom}), game.size());
}

}  // namespace fiar::gui
