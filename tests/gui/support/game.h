#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "gui/support/probe.h"
#include "gui/support/screen.h"
#include "gui/support/sound_server.h"

namespace fiar::gui {

/// The one screen of all tests, and what goes with it.
struct Desktop {
  Screen screen;
  std::unique_ptr<SoundServer> sound = SoundServer::start();  ///< before all that is to be heard; may be null
  Probe probe;

  static Desktop& get();
};

/// The game's executable file.
std::filesystem::path gameProgram();

struct Cell {
  int column = 0;
  int row = 0;

  bool operator==(const Cell&) const = default;
};

inline constexpr std::uint32_t kBoardColor = 0xFEF3E2;
inline constexpr std::uint32_t kGridColor = 0x999999;
inline constexpr std::uint32_t kLightRed = 0xFF8080;
inline constexpr std::uint32_t kDarkRed = 0xC00000;
inline constexpr std::uint32_t kLightBlue = 0x8080FF;
inline constexpr std::uint32_t kDarkBlue = 0x0000C0;
inline constexpr std::uint32_t kBlack = 0x000000;

/// What lies in the board's cells, row by row with a line end after each: "." nothing, "r" a red stone, "b" a
/// blue one, "R" and "B" stones of a won line, "?" something else.
using Position = std::string;

/// How many stones of either side there are.
int stones(const Position& position);
/// The cells with the given meaning, row by row.
std::vector<Cell> cellsOf(const Position& position, char meaning);
char meaningAt(const Position& position, Cell cell);

/// A running copy of the program, seen from outside. It is stopped in the end, whatever it does.
class Program {
public:
  /// \param unset names of variables that it does not find in its environment.
  explicit Program(const std::filesystem::path& file, const std::vector<std::string>& unset = {});
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  Program(Program&&) = delete;
  Program& operator=(Program&&) = delete;
  ~Program();

  long process() const { return process_; }
  std::vector<WindowInfo> windows() const;
  /// The first visible window of a kind (a Windows class) and, if given, a text; without a number when there
  /// is none.
  WindowInfo control(const std::string& kind, const std::string& text = {}) const;
  /// Waits for the program's end; returns its exit code, -1 with a test failure when it does not end.
  long exitCode() const;

private:
  long process_;
};

/// A copy of the program that plays. Waits, where it waits, with a test failure when what it waits for does
/// not come.
class Game : public Program {
public:
  /// Starts a copy and waits for its window with "Start" and the board in it.
  explicit Game(const std::filesystem::path& file = gameProgram(),
                const std::vector<std::string>& unset = {});

  /// The window; without a number when it is not there.
  WindowInfo window() const;
  bool startIsShown() const { return control("Button", "Start").number != 0; }
  /// The texts of the two score labels, the human's first.
  std::vector<std::string> scores() const;

  /// What lies on the board now.
  Position position() const;
  /// Whether a ring in a colour runs round a cell.
  bool ringIsAt(Cell cell, std::uint32_t color) const;
  /// Where a cell's centre is on the screen.
  Point centreOf(Cell cell) const;
  /// The board's inside on the screen, and how many cells it has a side; both as of the last locate().
  const Area& board() const { return board_; }
  int size() const { return size_; }
  /// Asks the window anew where the board is and how many cells it has.
  void locate();

  /// Clicks "Start" and waits until it is gone.
  void pressStart();
  /// Chooses a size with the mouse, by its place in the list, and waits until the list shows it.
  void chooseSize(int index);
  /// Moves the pointer to a cell and waits for the ring round it. What was clicked before has then been dealt
  /// with, unless the pointer was there already.
  void pointAt(Cell cell, std::uint32_t ring = kLightRed) const;
  /// Clicks an empty cell and waits for the stone and the computer's answer. Returns the position.
  Position play(Cell cell);

private:
  int size_ = 15;
  Area board_;
};

/// Checks that each line of the board's grid is where it belongs, that all cover whole pixels, and that all
/// are of one width. The first row and column must be the only ones that are not empty.
void expectSharpGrid(const Game& game);

}  // namespace fiar::gui
