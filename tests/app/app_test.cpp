#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <new>

#include "app/startUpMod.h"
#include "forms/painter.h"
#include "opponent/pattern_table.h"
#include "support/fake_socket.h"
#include "support/game.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorMail.h"

static std::size_t allocations = 0;

// In the place of the language's own, so that they can be counted. Inlined, they would seem mismatched.
void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace fiar {
namespace {

struct MainWindow : testing::Test, test::RunningGame {
  MainWindow() { load(); }

  /// Fills the board but for its first cell. No two stones are of one side, so that none has a line.
  void fillButOne() {
    const int rows = game.rows();
    for (int cell = 1; cell < game.columns() * rows; ++cell) game.board(cell / rows, cell % rows) = cell;
  }

  const std::vector<DrawCommand>& commands() const { return window.boardPic.drawing().commands; }
  const Grid emptyGrid = test::emptyBoard(15).board;
};

TEST_F(MainWindow, OpensWithAnEmptyBoardAndNoGame) {
  EXPECT_FALSE(window.Command1.Visible);
  tick();
  EXPECT_TRUE(window.Command1.Visible);
  EXPECT_EQ(commands().front(), (DrawCommand{.drawWidth = 2, .color = 0x999999, .y2 = 9960}));
  EXPECT_EQ(commands().size(), 2 * 16 + 2U) << "lines and two rings";
  EXPECT_EQ(window.boardPic.KeyStep, 664);
  EXPECT_EQ(window.Combo1.ListIndex(), 1);
  EXPECT_EQ(window.Timer1.Interval, 5);
  EXPECT_LT(window.tapSound.size(), window.errorSound.size()) << "not exchanged";
  click(4, 11);
  EXPECT_EQ(game.board, emptyGrid);
  // The diagnostics, which nobody sees.
  tick();
  const DrawingList& lines = window.debugPic.drawing();
  EXPECT_EQ(TextView(lines.characters.data(), lines.characters.size()), u"srX = 4srY = 11player = 0");
  EXPECT_EQ(lines.commands[0].y1, 0);
  machine.resources.patternTable = std::nullopt;
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
    EXPECT_EQ(game.board, test::emptyBoard(size).board);
    EXPECT_EQ(game.boardRows, size);
    EXPECT_FALSE(window.Command1.Visible);
  }
}

TEST_F(MainWindow, TheComputerAnswersOnTheNextTickAndIsSeenAndHeardOnTheOneAfter) {
  start();
  EXPECT_EQ(window.boardPic.AccessibleName, u"Column 1, row 1, empty");
  click(7, 7);
  EXPECT_EQ(game.player, kComputer);
  tick();
  EXPECT_EQ(window.boardPic.AccessibleName, u"Column 1, row 1, empty");
  // One evaluation for the refresh and one for the turn, without clearing the grids in between: the cell next
  // to the human's stone has twice its defence.
  EXPECT_EQ(game.defenceWeights(6, 6), 2 * (2 * 9 * 80));
  EXPECT_EQ(commands().size(), 32 + 3U);
  tick();
  // After the lines the stones, the ring of the computer's last one, and that of the pointer.
  constexpr auto kCircle = DrawCommand::Kind::Circle;
  const std::vector<DrawCommand> circles{{kCircle, true, 2, 0xC00000, 0xFF8080, 4316, 4316, 298.8F},
                                         {kCircle, true, 2, 0x0000C0, 0x8080FF, 4980, 4980, 298.8F},
                                         {kCircle, false, 2, kWhite, kBlack, 4316, 4316, 296.8F},
                                         {kCircle, false, 2, 0x8080FF, kBlack, 4980, 4980, 298.8F}};
  EXPECT_EQ(std::vector(commands().begin() + 32, commands().end()), circles);
  EXPECT_EQ(window.boardPic.AccessibleName, u"Blue to column 7, row 7. Column 8, row 8, red");
  // What is under the ring, without the answer as soon as the ring has moved.
  const std::tuple<double, double, TextView> rings[] = {
      {15, 7, u"Outside the board"}, {6, 6, u"Column 7, row 7, blue"}, {7, 14, u"Column 8, row 15, empty"}};
  for (const auto& [column, row, text] : rings) {
    moveTo(column, row);
    tick();
    EXPECT_EQ(window.boardPic.AccessibleName, text);
  }
}

TEST_F(MainWindow, EachClickHasItsSound) {
  start();
  click(7, 7);
  tick();
  // A taken cell gives the error sound and nothing else.
  const double lastMoveTime = game.lastMoveTime;
  click(7, 7);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_EQ(game.lastMoveTime, lastMoveTime);
  window.Check1.Value = 2;  // greyed
  window.Check1.Click();
  click(7, 7);
  click(14, 14);
  // A click before the tick plays for the computer.
  click(14, 13);
  EXPECT_EQ(game.board(14, 13), kComputer);
  EXPECT_EQ(game.player, kHuman);
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
  EXPECT_EQ(game.board, emptyGrid);
  EXPECT_TRUE(machine.sound.calls.empty());
}

TEST_F(MainWindow, ThePointersCellIsTheOneUnderIt) {
  // Divided as whole numbers toward zero: the first cell reaches as far beyond the edge.
  const std::pair<float, double> columns[] = {{663, 0},   {663.5F, 1}, {9959.4F, 14},    {-663, 0},
                                              {-664, -1}, {9960, 15},  {1e30F, 3234162}, {NAN, 0}};
  for (const auto& [position, cell] : columns) {
    window.boardPic.MouseMove(0, 0, position, 0);
    EXPECT_EQ(game.srX, cell) << position;
  }
  game.cellWidth = 0;  // as before any grid has been drawn
  window.boardPic.MouseMove(0, 0, 5000, 5000);
  EXPECT_EQ(game.srX, 0);
}

TEST_F(MainWindow, ALineIsFoundAfterTheComputersAnswer) {
  start();
  for (int i = 4; i < 8; ++i) {
    game.board(i, 1) = game.board(i, 3) = kHuman;
    game.board(3, i) = kComputer;
  }
  click(3, 1);
  tick();
  EXPECT_EQ(game.player, kNobody);
  // The side on move is evaluated first: here both complete five, and the marker of the human's line has
  // replaced that of the computer's, which completes its own elsewhere.
  EXPECT_EQ(game.attackWeights(3, 3), 50'000'000);
  EXPECT_EQ(game.lastMove, (CellPoint{3, 8}));
  EXPECT_EQ(window.scoreLabel[0].Caption, u"1");
  EXPECT_FALSE(window.Command1.Visible);
  tick();
  EXPECT_TRUE(window.Command1.Visible);
  EXPECT_EQ(window.boardPic.AccessibleName, u"You won");
  EXPECT_EQ(window.Command1.AccessibleName, u"You won. Start");
  moveTo(7, 2);
  tick();
  EXPECT_EQ(window.boardPic.AccessibleName, u"Column 8, row 3, empty");
  start();
  EXPECT_EQ(game.board, emptyGrid);
  EXPECT_EQ(game.winMarks, emptyGrid);
  EXPECT_EQ(game.lastMove, (CellPoint{3, 8}));
  for (int row = 3; row < 7; ++row) game.board(0, row) = kComputer;
  for (int i = 0; i < 2; ++i) tick();
  EXPECT_EQ(window.boardPic.AccessibleName, u"The computer won");
}

TEST_F(MainWindow, AFullBoardStartsAGameAfterTheHumansStoneAndWaitsForASizeAfterTheComputers) {
  start();
  fillButOne();
  // The last stone completes five; the new game, which it is the computer's turn to open, clears it before
  // anyone looks.
  for (int column = 1; column < 5; ++column) game.board(column, 0) = kHuman;
  click(0, 0);
  tick();
  EXPECT_EQ(game.board, emptyGrid);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_FALSE(game.firstMoveFlag);
  EXPECT_EQ(game.score[0], 0);
  fillButOne();
  game.player = kComputer;
  for (int i = 0; i < 2; ++i) tick();
  EXPECT_EQ(game.board(0, 0), kComputer);
  EXPECT_EQ(game.player, kHuman);
  EXPECT_FALSE(window.Command1.Visible);
}

TEST_F(MainWindow, ATickWithNothingChangedNeitherDrawsNorEvaluatesNorAllocates) {
  window.Combo1.setListIndex(3);
  fillButOne();
  tick();
  game.attackWeights(0, 0) = 5;
  const DrawingList before = window.boardPic.drawing();
  const std::uint64_t revision = window.boardPic.revision();
  allocations = 0;
  tick();
  EXPECT_EQ(allocations, 0U);
  EXPECT_EQ(window.boardPic.revision(), revision);
  EXPECT_EQ(game.attackWeights(0, 0), 5);
  // A ring that has moved by a cell touches two of them, but for its soft edge.
  moveTo(1, 0);
  tick();
  const PixelRect changed = changedArea(before, window.boardPic.drawing(), PaintScale(), {664, 664});
  EXPECT_NEAR(changed.width + changed.height, 3 * 664 / 30.0, 2);
  // One of each kind that is drawn or printed.
  const std::function<void()> changes[] = {
      [&] { game.board(3, 3) = kNobody; },
      [&] { game.winMarks(3, 3) = kHuman; },
      [&] { game.srY = 3; },
      [&] { game.lastMove.y = 3; },
      [&] { game.player = kNobody; },
      [&] { window.blueColorPic[1].BackColor = kGreen; },
      [&] { window.boardPic.DrawWidth = 1; },
      [&] { window.debugPic.Cls(); },
  };
  for (const auto& change : changes) {
    const std::uint64_t drawn = window.boardPic.revision();
    change();
    tick();
    EXPECT_NE(window.boardPic.revision(), drawn) << &change - changes;
  }
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
  const TextView shipped = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  const TextView builtIn = u"kqv5830tyemxwu71";
  // The configuration, the text that the working key is made from, the connect text if a database is to be
  // used, and the other settings.
  const std::tuple<std::optional<std::string>, TextView, std::optional<Text>, TextView, TextView> cases[] = {
      {test::resourceFile("configuration.txt"), shipped, {}, u"", u""},
      {std::nullopt, builtIn, u"", u"", u""},
      {"<cryptoPass></cryptoPass><runMySQL>Off</runMySQL>", builtIn, {}, u"", u""},
      {"<runMySQL>0</runMySQL><cryptoPass>torn", builtIn, {}, u"", u""},
      {"<QUERYpl>select</QUERYpl><clipsPAth>c:\\clips</clipsPAth><runMySQL>vklop</runMySQL>"
       "<cryptoPass>p\x8A</cryptoPass><mysqlConnect>host=db</mysqlConnect>",
       u"p\u0160", u"host=db", u"c:\\clips", u"select"}};
  for (const auto& [configuration, cryptoPass, connectText, clipsPath, queryText] : cases) {
    SCOPED_TRACE(configuration.value_or("no configuration"));
    test::FakePlatform machine;
    const test::FakeNetwork network(machine);
    const bool secondInstance = !configuration;
    machine.environment.otherInstance = secondInstance;
    machine.resources.configuration = configuration;
    Toolkit toolkit(machine.platform);
    toolkit.mail().subject = u"of an instance that may be released";
    bool shown = false;
    startUpMod::Main(toolkit, [&] { shown = true; });
    EXPECT_TRUE(shown);
    const ProgramValues& values = toolkit.values();
    EXPECT_EQ(values.configText, machine.codePage.decode(configuration.value_or("")));
    EXPECT_EQ(values.workKey, toolkit.codeCod().EnCodeLight(cryptoPass, u"", true));
    EXPECT_EQ(values.clipsPath, clipsPath);
    EXPECT_EQ(values.queryText, queryText);
    EXPECT_EQ(values.useDatabase, connectText.has_value());
    EXPECT_EQ(values.queries.size(), connectText ? 101U : 0U);
    EXPECT_EQ(machine.database.connectText, connectText);
    EXPECT_EQ(toolkit.variables().getVar(u"_now"), u"14.3.2026 12:0:0");
    EXPECT_TRUE(toolkit.variables().commandList().starts_with(u":File;"));
    EXPECT_EQ(toolkit.mail().subject.text().empty(), secondInstance);
  }
}

TEST(StartUp, SetsTheFolders) {
  // Variables of the environment, the system's temporary folder, and that of the script.
  const std::tuple<std::map<Text, Text>, TextView, TextView> cases[] = {
      {{}, u"\\", u"\\"},
      {{{u"TEMP", u"C:\\T\\"}, {u"SCRIPT_PATH", u"/www//a///b"}}, u"C:\\T\\\\", u"\\www\\a\\\\b\\"},
      {{{u"SCRIPT_FILENAME", u"D:/w/a.bas"}, {u"SCRIPT_PATH", u"no"}}, u"\\", u"D:\\w\\"},
      {{{u"TEMP", u"\\T"}, {u"SCRIPT_FILENAME", u"a.bas"}, {u"SCRIPT_PATH", u"E:\\"}}, u"\\T", u"E:\\"},
      {{{u"APPL_PHYSICAL_PATH", u"W:\\"}, {u"SCRIPT_FILENAME", u"/no/"}}, u"\\", u"W:\\"},
  };
  for (const auto& [variables, systemTemporaryFolder, scriptFolder] : cases) {
    test::FakePlatform machine;
    machine.environment.variables = variables;
    machine.environment.folder = u"C:\\My g\u00E1mes\\Five";
    Toolkit toolkit(machine.platform);
    startUpMod::Main(toolkit, [] {});
    ProgramValues& values = toolkit.values();
    EXPECT_EQ(values.temporaryFolder, u"C:\\My g\u00E1mes\\Five\\temp\\");
    EXPECT_EQ(values.scriptsFolder, u"C:\\My g\u00E1mes\\Five\\scripts\\");
    EXPECT_EQ(values.systemTemporaryFolder, systemTemporaryFolder);
    EXPECT_EQ(values.scriptFolder, scriptFolder);
    EXPECT_EQ(values.lineBreak, u"\r\n");
    EXPECT_EQ(values.startTime, machine.clock.date);
    EXPECT_EQ(values.runMode, RunMode::Built);
    // A folder that ends as folders do, and the program as its developer runs it.
    machine.environment.folder = values.applicationFolder;
    values.runMode = RunMode::InDevelopment;
    startUpMod::setupPaths(toolkit);
    EXPECT_EQ(values.applicationFolder, u"C:\\My g\u00E1mes\\Five\\");
    EXPECT_TRUE(values.scriptFolder.starts_with(u"\\\\"));
  }
}

}  // namespace
}  // namespace fiar
