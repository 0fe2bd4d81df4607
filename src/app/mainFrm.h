#pragma once

#include <array>
#include <string>

#include "board/board.h"
#include "board/description.h"
#include "board/drawing.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "forms/picture_box.h"
#include "opponent/evaluation.h"
#include "toolkit/toolkit.h"

namespace fiar {

/// The game's window: its controls, its state, and what happens in its events. All of it is plain data, so
/// that it works without a screen too; a host shows `form`, raises the events and calls nothing else.
class mainFrm {
public:
  /// Lays the controls out; nothing is loaded before `form.Load`.
  /// \param toolkit the process's toolkit with its machine; outlives the window.
  explicit mainFrm(Toolkit& toolkit);
  mainFrm(const mainFrm&) = delete;
  mainFrm& operator=(const mainFrm&) = delete;
  ~mainFrm() = default;

  /// Loads the pattern table into the variable store and the two sound images. Throws PatternTableError for a
  /// table that is missing or malformed; a missing sound is silence.
  void readUtezi();
  /// Appends the 256 lines of the pattern table to "spremenljivka.txt" in the application folder. No event
  /// calls this.
  void genUtezi();
  /// Scores the empty cells for a side, 1 or 2.
  void CalcUtezi2(double side);
  /// Places the stone of the side on move; starts a new game where no cell is empty.
  void playNextMove();
  /// Ends the game when five stones of a side are in line.
  void checkForVictory();

  void drawGrid();
  void drawBoard();
  void drawMousePlayer();
  /// Rings the best empty cells. No event calls this.
  void hiliteNextMove();
  /// Prints the weights on the board. No event calls this.
  void drawutezi();

  /// Plays a sound image instead of what is playing; an empty image changes nothing.
  void playWave(const std::string& image);

  Form form;
  PictureBox Picture1;  ///< the background, with the other visible controls in it
  PictureBox boardPic;
  std::array<Label, 2> scoreLabel;  ///< games won by the human and by the computer
  ComboBox Combo1;                  ///< board sizes
  CommandButton Command1;           ///< "Start"
  PictureBox Picture2;
  PictureBox Picture3;  ///< holds the reward that Picture2 shows after a ten-to-nil lead
  CheckBox Check1;      ///< "Sound"
  Timer Timer1;
  CommandButton Command2;
  Swatches redColorPic;
  Swatches blueColorPic;
  PictureBox debugPic;  ///< where the pointer's cell and the side on move are printed

  Board game;
  std::string tapSound;  ///< WAVE file images; empty: silence
  std::string errorSound;

private:
  void designControls();
  void designBoardPictures();
  void designHiddenControls();
  void connectEvents();

  void Form_Load();
  void Timer1_Timer();
  void Command1_Click();
  void Combo1_Click();
  void Check1_Click();
  void boardPic_MouseMove(float X, float Y);
  void boardPic_MouseUp(int button, int shift);

  /// What a tick draws, prints and describes depends on these; it does so anew when one of them has changed.
  struct Sources {
    std::array<std::uint64_t, 4> revisions{};  ///< of grids and pictures
    std::array<double, 11> numbers{};          ///< of the Board and its picture
    std::array<Color, 4> swatches{};
    int drawWidth = 0;

    bool operator==(const Sources&) const = default;
  };
  Sources sources() const;
  void printDiagnostics();
  void redrawBoard();
  void describeBoard();
  void refreshEvaluation();
  void evaluateBothSides();
  void playComputersTurn();
  StoneColors stoneColors() const { return {redColorPic, blueColorPic}; }

  Toolkit& toolkit_;
  const Platform& platform_;
  PatternWeights patternWeights_;
  BoardDescription description_;
  Sources shown_;
};

}  // namespace fiar
