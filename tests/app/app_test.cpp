#include <gtest/gtest.h>

#include <limits>

#include "app/mainFrm.h"
#include "app/startUpMod.h"
#include "forms/painter.h"
#include "support/allocation_count.h"
#include "support/fake_socket.h"
#include "support/game.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorMail.h"

namespace fiar {
namespace {

struct MainWindow : testing::Test, test::RunningGame {
  MainWindow() { load(); }

  /// The side on move, and how many stones the human and the computer have.
  using Position = std::array<double, 3>;
  Position position() const { return {game.player, stones(kHuman), stones(kComputer)}; }

  /// Fills the board but for its first cell with a pattern in which no side has more than two in a row.
  void fillButOne() {
    for (int cell = 1; cell < game.columns() * game.rows(); ++cell) {
      const int column = cell / game.rows();
      const int row = cell % game.rows();
      game.board(column, row) = (column + 2 * row) % 4 < 2 ? kHuman : kComputer;
    }
  }
};

TEST_F(MainWindow, OpensWithAnEmptyBoardAndNoGame) {
  EXPECT_FALSE(window.Command1.Visible);
  tick();
  EXPECT_TRUE(window.Command1.Visible);
  EXPECT_EQ(window.boardPic.drawing().commands.front().drawWidth, 2);
  EXPECT_EQ(window.boardPic.drawing().commands.size(), 2 * 16 + 2U) << "lines and two rings";
  EXPECT_EQ(window.boardPic.KeyStep, 664);
  moveTo(4, 11);
  release();
  EXPECT_EQ(position(), (Position{kNobody, 0, 0}));
  EXPECT_EQ(stones(kNobody), 15 * 15);
  EXPECT_EQ(window.Combo1.ListIndex(), 1);
  EXPECT_EQ(window.Timer1.Interval, 5);
  EXPECT_LT(window.tapSound.size(), window.errorSound.size());
  // The diagnostics, which nobody sees.
  tick();
  const DrawingList& lines = window.debugPic.drawing();
  EXPECT_EQ(TextView(lines.characters.data(), lines.characters.size()), u"srX = 4srY = 11player = 0");
  EXPECT_EQ(lines.commands[0].y1, 0);
  machine.resources.replaced[102] = std::nullopt;
  EXPECT_THROW(load(), PatternTableError);
}

TEST_F(MainWindow, SidesOpenAlternatelyAcrossSizeChanges) {
  start();
  double opener = kHuman;
  // Without a selection the size stays and a game starts.
  for (const auto& [index, size] : {std::pair{3, 30}, {-1, 30}, {0, 10}, {1, 15}, {2, 20}}) {
    // Choosing the same size again is no change.
    for (int i = 0; i < 2; ++i) window.Combo1.setListIndex(index);
    opener = 3 - opener;
    EXPECT_EQ(game.player, opener);
    EXPECT_EQ(stones(kNobody), size * size);
    EXPECT_EQ(game.boardRows, size);
    EXPECT_FALSE(window.Command1.Visible);
  }
}

TEST_F(MainWindow, TheComputerAnswersOnTheNextTickAndEachClickHasItsSound) {
  start();
  click(7, 7);
  EXPECT_EQ(position(), (Position{kComputer, 1, 0}));
  tick();
  EXPECT_EQ(position(), (Position{kHuman, 1, 1}));
  EXPECT_EQ(game.lastMove, (CellPoint{6, 6}));
  // One evaluation for the refresh and one for the turn, without clearing the grids in between: the cell next
  // to the human's stone has twice its defence.
  EXPECT_EQ(game.defenceWeights(6, 6), 2 * (2 * 9 * 80));
  // After the lines the stones, the ring of the computer's last one, and that of the pointer.
  tick();
  constexpr auto kCircle = DrawCommand::Kind::Circle;
  const std::vector<DrawCommand> circles{{kCircle, true, 2, 0xC00000, 0xFF8080, 4316, 4316, 298.8F},
                                         {kCircle, true, 2, 0x0000C0, 0x8080FF, 4980, 4980, 298.8F},
                                         {kCircle, false, 2, kWhite, kBlack, 4316, 4316, 296.8F},
                                         {kCircle, false, 2, 0x8080FF, kBlack, 4980, 4980, 298.8F}};
  const std::vector<DrawCommand>& commands = window.boardPic.drawing().commands;
  EXPECT_EQ(std::vector(commands.begin() + 32, commands.end()), circles);
  // A taken cell gives the error sound and nothing else.
  const double lastMoveTime = game.lastMoveTime;
  click(7, 7);
  EXPECT_EQ(position(), (Position{kHuman, 1, 1}));
  EXPECT_EQ(game.lastMoveTime, lastMoveTime);
  window.Check1.Value = 2;  // greyed
  window.Check1.Click();
  click(7, 7);
  click(14, 14);
  // A click before the tick plays for the computer.
  click(14, 13);
  EXPECT_EQ(position(), (Position{kHuman, 2, 2}));
  EXPECT_EQ(game.lastMoveTime, machine.clock.seconds);
  window.playWave("");
  const std::optional<std::string> stop;
  EXPECT_EQ(machine.sound.calls, (std::vector{stop, {window.tapSound}, stop, {window.errorSound}}));
}

TEST_F(MainWindow, OnlyAPlainLeftClickOnTheBoardCounts) {
  start();
  moveTo(3, 3);
  for (const int button : {kRightButton, kMiddleButton}) release(button);
  for (const int shift : {kShiftKey, kCtrlKey, kAltKey}) release(kLeftButton, shift);
  for (const auto& [column, row] : {std::pair{-2.0, 3.0}, {15, 3}, {3, -2}, {3, 15}, {1e30, -1e30}})
    click(column, row);
  EXPECT_EQ(position(), (Position{kHuman, 0, 0}));
  EXPECT_TRUE(machine.sound.calls.empty());
}

TEST_F(MainWindow, ThePointersCellIsTheOneUnderIt) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  // Divided as whole numbers toward zero: the first cell reaches as far beyond the edge.
  const std::pair<float, double> rows[] = {{663, 0},   {663.5F, 1}, {9959.4F, 14},    {-663, 0},
                                           {-664, -1}, {9960, 15},  {1e30F, 3234162}, {kNan, 0}};
  for (const auto& [position, cell] : rows) {
    window.boardPic.MouseMove(0, 0, position, position);
    EXPECT_EQ(game.srX, cell) << position;
    EXPECT_EQ(game.srY, cell) << position;
  }
  game.cellWidth = 0;  // as before any grid has been drawn
  window.boardPic.MouseMove(0, 0, 5000, 5000);
  EXPECT_EQ(game.srX, 0);
}

TEST_F(MainWindow, AHumanLineIsFoundAfterTheComputersAnswer) {
  start();
  for (int column = 3; column < 7; ++column) game.board(column, 0) = kHuman;
  click(7, 0);
  tick();
  EXPECT_EQ(position(), (Position{kNobody, 5, 1}));
  EXPECT_FALSE(window.Command1.Visible);
  const CellPoint lastMove = game.lastMove;
  tick();
  EXPECT_EQ(window.boardPic.AccessibleName, u"You won");
  EXPECT_EQ(window.Command1.AccessibleName, u"You won. Start");
  EXPECT_TRUE(window.Command1.Visible);
  start();
  EXPECT_EQ(stones(kNobody), 225);
  EXPECT_EQ(game.winMarks(7, 0), kNobody);
  EXPECT_EQ(game.lastMove, lastMove);
  EXPECT_EQ(window.scoreLabel[0].Caption, u"1");
}

TEST_F(MainWindow, TheSideOnMoveIsEvaluatedFirst) {
  start();
  for (int i = 4; i < 8; ++i) {
    game.board(i, 3) = kHuman;
    game.board(3, i) = kComputer;
  }
  game.board(8, 3) = kComputer;
  game.board(3, 8) = kHuman;
  click(14, 14);
  tick();
  EXPECT_EQ(game.lastMove, (CellPoint{3, 3}));
  // Both sides complete five there; the marker of the human's line has replaced that of the computer's.
  EXPECT_EQ(game.attackWeights(3, 3), 50'000'000);
}

TEST_F(MainWindow, AFullBoardStartsAGameAfterTheHumansStoneAndWaitsForASizeAfterTheComputers) {
  start();
  fillButOne();
  // The last stone completes five; the new game, which it is the computer's turn to open, clears it before
  // anyone looks.
  for (int column = 1; column < 5; ++column) game.board(column, 0) = kHuman;
  click(0, 0);
  tick();
  EXPECT_EQ(position(), (Position{kHuman, 0, 0}));
  EXPECT_FALSE(game.firstMoveFlag);
  EXPECT_EQ(game.score[0], 0);
  fillButOne();
  game.player = kComputer;
  for (int i = 0; i < 2; ++i) tick();
  EXPECT_EQ(stones(kNobody), 0);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_FALSE(window.Command1.Visible);
}

TEST_F(MainWindow, ATickWithNothingChangedDrawsTheSameAndNeitherEvaluatesNorAllocates) {
  window.Combo1.setListIndex(3);
  fillButOne();
  tick();
  game.attackWeights(0, 0) = 5;
  const DrawingList before = window.boardPic.drawing();
  const std::size_t allocations = test::allocationCount();
  tick();
  const PaintScale scale{.pixelsPerTwip = 2 * 664 / 9960.0, .pixelsPerDrawWidth = 2};
  const PixelSize size{2 * 664, 2 * 664};
  EXPECT_EQ(changedArea(before, window.boardPic.drawing(), scale, size).width, 0);
  EXPECT_EQ(test::allocationCount() - allocations, 0U);
  EXPECT_EQ(game.attackWeights(0, 0), 5);
  // A ring that has moved by a cell touches two of them, but for its soft edge.
  moveTo(1, 0);
  tick();
  const PixelRect changed = changedArea(before, window.boardPic.drawing(), scale, size);
  EXPECT_NEAR(changed.width + changed.height, 3 * size.width / 30.0, 2);
  // What an earlier time says has changed, too; between games the grids are cleared and nothing is evaluated.
  game.lastMoveTime = 1;
  game.player = kNobody;
  tick();
  EXPECT_EQ(game.attackWeights(0, 0), 0);
  EXPECT_EQ(game.defenceWeights(0, 0), 0);
  EXPECT_EQ(game.lastMoveTime, machine.clock.seconds);
  EXPECT_EQ(game.lastCalcTime, machine.clock.seconds);
}

TEST(StartUp, SetsTheProgramWideValuesAndShowsTheWindow) {
  const std::string on =
      "<QUERYpl>select</QUERYpl><clipsPAth>c:\\clips</clipsPAth><runMySQL>vklop</runMySQL>"
      "<cryptoPass>p\x8A</cryptoPass><mysqlConnect>host=db</mysqlConnect>";
  const TextView builtIn = u"kqv5830tyemxwu71";
  const struct {
    std::optional<std::string> configuration;
    TextView cryptoPass;
    std::optional<Text> connectText{};
    TextView clipsPath{};
    TextView queryText{};
  } cases[] = {
      {test::FileResources().custom(101), u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK"},
      {std::nullopt, builtIn, u""},
      {"<cryptoPass></cryptoPass><runMySQL>Off</runMySQL>", builtIn},
      {"<runMySQL>0</runMySQL><cryptoPass>torn", builtIn},
      {on, u"p\u0160", u"host=db", u"c:\\clips", u"select"},
  };
  for (const bool secondInstance : {false, true}) {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.configuration.value_or("no configuration"));
      test::FakePlatform machine;
      const test::FakeNetwork network(machine);
      machine.environment.otherInstance = machine.database.fails = secondInstance;
      machine.resources.replaced[101] = c.configuration;
      Toolkit toolkit(machine.platform);
      toolkit.mail().subject = u"of an instance that may be released";
      bool shown = false;
      startUpMod::Main(toolkit, [&] { shown = true; });
      EXPECT_TRUE(shown);
      const ProgramValues& values = toolkit.values();
      EXPECT_EQ(values.runMode, RunMode::Built);
      EXPECT_EQ(values.configText, machine.codePage.decode(c.configuration.value_or("")));
      EXPECT_EQ(values.workKey, toolkit.codeCod().EnCodeLight(c.cryptoPass, u"", true));
      EXPECT_EQ(values.clipsPath, c.clipsPath);
      EXPECT_EQ(values.queryText, c.queryText);
      EXPECT_EQ(values.useDatabase, c.connectText.has_value());
      EXPECT_EQ(values.queries.size(), c.connectText ? 101U : 0U);
      EXPECT_EQ(machine.database.connectText, c.connectText);
      EXPECT_EQ(toolkit.variables().getVar(u"_now"), u"14.03.2026 12:00:00");
      EXPECT_TRUE(toolkit.variables().commandList().starts_with(u":File;"));
      EXPECT_EQ(toolkit.mail().subject.text().empty(), secondInstance);
    }
  }
}

TEST(StartUp, SetsTheFolders) {
  const struct {
    std::map<Text, Text> variables;
    Text systemTemporaryFolder;
    Text scriptFolder;
    Text programFolder = u"C:\\My g\u00E1mes\\Five";
  } cases[] = {
      {{}, u"\\", u"\\"},
      {{{u"TEMP", u"C:\\T\\"}}, u"C:\\T\\\\", u"\\", u"C:\\My g\u00E1mes\\Five\\"},
      {{{u"TEMP", u"\\T"}}, u"\\T", u"\\"},
      {{{u"SCRIPT_PATH", u"/www//a///b"}}, u"\\", u"\\www\\a\\\\b\\"},
      {{{u"SCRIPT_FILENAME", u"D:/w/a.bas"}, {u"SCRIPT_PATH", u"no"}}, u"\\", u"D:\\w\\"},
      {{{u"SCRIPT_FILENAME", u"a.bas"}, {u"SCRIPT_PATH", u"E:\\"}}, u"\\", u"E:\\"},
      {{{u"APPL_PHYSICAL_PATH", u"W:\\"}, {u"SCRIPT_FILENAME", u"/no/"}}, u"\\", u"W:\\"},
  };
  for (const auto& c : cases) {
    test::FakePlatform machine;
    machine.environment.variables = c.variables;
    machine.environment.folder = c.programFolder;
    Toolkit toolkit(machine.platform);
    startUpMod::setupPaths(toolkit);
    ProgramValues& values = toolkit.values();
    EXPECT_EQ(values.applicationFolder, u"C:\\My g\u00E1mes\\Five\\");
    EXPECT_EQ(values.temporaryFolder, u"C:\\My g\u00E1mes\\Five\\temp\\");
    EXPECT_EQ(values.scriptsFolder, u"C:\\My g\u00E1mes\\Five\\scripts\\");
    EXPECT_EQ(values.systemTemporaryFolder, c.systemTemporaryFolder);
    EXPECT_EQ(values.scriptFolder, c.scriptFolder);
    EXPECT_EQ(values.lineBreak, u"\r\n");
    EXPECT_EQ(values.startTime, machine.clock.date);
    values.runMode = RunMode::InDevelopment;
    startUpMod::setupPaths(toolkit);
    EXPECT_TRUE(values.scriptFolder.starts_with(u"\\\\"));
  }
}

}  // namespace
}  // namespace fiar
