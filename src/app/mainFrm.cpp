#include "app/mainFrm.h"

#include "board/victory.h"
#include "opponent/move_choice.h"
#include "opponent/pattern_table.h"
#include "opponent/weight_overlay.h"
#include "toolkit/clsZantorBas.h"

namespace fiar {
namespace {

/// A board size with its text in the list.
struct BoardSize {
  double cells;
  TextView item;
};

constexpr auto kBoardSizes = std::to_array<BoardSize>({
    {10, u"10 x 10"},
    {15, u"15 x 15"},
    {20, u"20 x 20"},
    {30, u"30 x 30"},
});
constexpr int kFirstSizeIndex = 1;
// The size after loading, whatever the list says.
constexpr int kFirstSize = 15;
// The width of the board's lines once the window has been loaded.
constexpr int kBoardDrawWidth = 2;

/// The cell that a pointer position lies in; the first one before any grid has been drawn.
double cellAt(float position, double cellSize) {
  const std::int32_t size = roundToEven(cellSize);
  if (size <= 0) return 0;
  // Deliberate: truncated toward zero; one would expect rounding down. So the first cell also covers a cell's
  // width outside the left or upper edge.
  const std::int32_t cell = roundToEven(static_cast<double>(position)) / size;
  return cell;
}

}  // namespace

mainFrm::mainFrm(Toolkit& toolkit)
    : toolkit_(toolkit),
      platform_(toolkit.platform()),
      patternWeights_(toolkit.variables(), platform_.regional),
      description_(platform_.regional) {
  designControls();
  connectEvents();
}

void mainFrm::connectEvents() {
  form.Load = [this] { Form_Load(); };
  Timer1.Tick = [this] { Timer1_Timer(); };
  Command1.Click = [this] { Command1_Click(); };
  Combo1.Click = [this] { Combo1_Click(); };
  Check1.Click = [this] { Check1_Click(); };
  boardPic.MouseMove = [this](int, int, float X, float Y) { boardPic_MouseMove(X, Y); };
  boardPic.MouseUp = [this](int button, int shift, float, float) { boardPic_MouseUp(button, shift); };
}

void mainFrm::Form_Load() {
  readUtezi();
  game.lastMoveTime = platform_.clock.timer();
  game.firstMoveFlag = true;
  game.soundOn = true;
  for (const BoardSize& size : kBoardSizes) Combo1.AddItem(size.item);
  // Raises Combo1_Click and so starts a whole new game. What follows ends that game again, but the human now
  // opens the next one.
  Combo1.setListIndex(kFirstSizeIndex);
  game.boardCols = kFirstSize;
  game.boardRows = kFirstSize;
  game.board.reset(kFirstSize, kFirstSize);
  resetGrid(game, game.winMarks);
  resetGrid(game, game.attackWeights);
  resetGrid(game, game.defenceWeights);
  game.player = kNobody;
  drawGrid();
  boardPic.DrawWidth = kBoardDrawWidth;
}

void mainFrm::readUtezi() {
  const auto table = platform_.resources.custom(kPatternTableResource);
  if (!table) throw PatternTableError(u"it is missing");
  loadPatternTable(*table, toolkit_);
  tapSound = platform_.resources.custom(u"WAVTAP").value_or("");
  errorSound = platform_.resources.custom(u"WAVERR").value_or("");
}

void mainFrm::Command1_Click() {
  game.lastMoveTime = platform_.clock.timer();
  game.firstMoveFlag = !game.firstMoveFlag;
  game.player = game.firstMoveFlag ? kHuman : kComputer;
  resetGrid(game, game.board);
  resetGrid(game, game.winMarks);
  resetGrid(game, game.spareGrid);
  resetGrid(game, game.attackWeights);
  resetGrid(game, game.defenceWeights);
  Command1.Visible = false;
  // The board gets the focus now, and a screen reader says its name.
  describeBoard();
}

void mainFrm::Combo1_Click() {
  const int index = Combo1.ListIndex();
  if (index >= 0 && index < static_cast<int>(kBoardSizes.size())) {
    game.boardCols = kBoardSizes[static_cast<std::size_t>(index)].cells;
    game.boardRows = game.boardCols;
  }
  Command1_Click();
}

void mainFrm::Check1_Click() {
  game.soundOn = clsZantorBas::GetTF(platform_.regional.numberText(Check1.Value));
}

void mainFrm::Timer1_Timer() {
  if (sources() != shown_) {
    printDiagnostics();
    redrawBoard();
    // While the computer is on move nothing is said: its answer, which the next tick describes, comes first.
    if (game.player != kComputer) describeBoard();
    shown_ = sources();
  }
  if (game.lastMoveTime != game.lastCalcTime) refreshEvaluation();
  if (game.player == kNobody && !Command1.Visible) Command1.Visible = true;
  if (game.player == kComputer) playComputersTurn();
}

mainFrm::Sources mainFrm::sources() const {
  return {.revisions = {game.board.revision(), game.winMarks.revision(), boardPic.revision(),
                        debugPic.revision()},
          .numbers = {game.srX, game.srY, game.player, game.boardCols, game.boardRows, game.cellWidth,
                      game.cellHeight, game.lastMove.x, game.lastMove.y, boardPic.Width, boardPic.Height},
          .swatches = {redColorPic[0].BackColor, redColorPic[1].BackColor, blueColorPic[0].BackColor,
                       blueColorPic[1].BackColor},
          .drawWidth = boardPic.DrawWidth};
}

void mainFrm::redrawBoard() {
  boardPic.Cls();
  drawGrid();
  drawBoard();
  drawMousePlayer();
}

void mainFrm::printDiagnostics() {
  debugPic.Cls();
  const auto print = [this](TextView name, double value) {
    debugPic.Print(Text(name) + platform_.regional.numberText(value));
  };
  print(u"srX = ", game.srX);
  print(u"srY = ", game.srY);
  print(u"player = ", game.player);
}

void mainFrm::describeBoard() {
  boardPic.AccessibleName = description_.update(game);
  // "Start" takes the focus when a game has ended, so it is what a screen reader says then.
  const TextView result = description_.result();
  if (!result.empty()) Command1.AccessibleName = Text(result) + u". Start";
}

void mainFrm::refreshEvaluation() {
  const double now = platform_.clock.timer();
  game.lastMoveTime = now;
  game.lastCalcTime = now;
  resetGrid(game, game.attackWeights);
  resetGrid(game, game.defenceWeights);
  if (game.player != kNobody) evaluateBothSides();
}

// The side on move first: where both complete five, the other side's marker replaces its own.
void mainFrm::evaluateBothSides() {
  CalcUtezi2(game.player);
  CalcUtezi2(game.player == kHuman ? kComputer : kHuman);
}

void mainFrm::playComputersTurn() {
  // Deliberate: one would expect this to be skipped right after a refresh. It is not, so the sums are
  // doubled.
  evaluateBothSides();
  playNextMove();
  game.player = kHuman;
  checkForVictory();
}

void mainFrm::boardPic_MouseMove(float X, float Y) {
  game.srX = cellAt(X, game.cellWidth);
  game.srY = cellAt(Y, game.cellHeight);
}

void mainFrm::boardPic_MouseUp(int button, int shift) {
  if (game.player == kNobody) return;
  if (button != kLeftButton || shift != 0) return;
  const std::int32_t column = roundToEven(game.srX);
  const std::int32_t row = roundToEven(game.srY);
  // Outside after the pointer was dragged off the board.
  if (!game.board.contains(column, row)) return;
  if (game.board(column, row) != kNobody) {
    if (game.soundOn) playWave(errorSound);
    return;
  }
  game.board(column, row) = game.player;
  // Deliberate: a click before the computer's tick is not ignored. It places the computer's stone and gives
  // the move back to the human.
  if (game.player == kHuman) {
    if (game.soundOn) playWave(tapSound);
    game.player = kComputer;
  } else {
    game.player = kHuman;
  }
  game.lastMoveTime = platform_.clock.timer();
}

void mainFrm::genUtezi() {
  fiar::genUtezi(toolkit_);
}

void mainFrm::CalcUtezi2(double side) {
  fiar::CalcUtezi2(side, game, patternWeights_);
}

void mainFrm::playNextMove() {
  fiar::playNextMove(game, platform_.clock, platform_.random, Command1.Click);
}

void mainFrm::checkForVictory() {
  fiar::checkForVictory(game, {scoreLabel, Picture2, Picture3, platform_.regional});
}

void mainFrm::drawGrid() {
  fiar::drawGrid(game, boardPic);
}

void mainFrm::drawBoard() {
  fiar::drawBoard(game, stoneColors(), boardPic);
}

void mainFrm::drawMousePlayer() {
  fiar::drawMousePlayer(game, stoneColors(), boardPic);
}

void mainFrm::hiliteNextMove() {
  fiar::hiliteNextMove(game, boardPic);
}

void mainFrm::drawutezi() {
  fiar::drawutezi(game, boardPic);
}

void mainFrm::playWave(const std::string& image) {
  if (image.empty()) return;
  platform_.sound.stop();
  platform_.sound.play(image);
}

}  // namespace fiar
