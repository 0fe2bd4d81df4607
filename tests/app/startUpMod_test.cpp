#include "app/startUpMod.h"

#include <gtest/gtest.h>

#include <string>

#include "support/loaded_toolkit.h"
#include "toolkit/clsZantorCodeCod.h"

namespace fiar {
namespace {

using startUpMod::ProgramValues;
using startUpMod::RunMode;

struct StartUp : testing::Test, test::FakeToolkit {};

TEST_F(StartUp, ReadsTheConfigurationAndShowsTheWindowLast) {
  machine.resources.loadRealOnes = true;
  const std::string shipped = machine.resources.custom(101).value();
  const TextView shippedPass = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  EXPECT_EQ(shipped, "<mysqlConnect>\r\n</mysqlConnect>\r\n<cryptoPass>" + toUtf8(shippedPass) +
                         "</cryptoPass>\r\n<runMySQL>0</runMySQL>\r\n");
  machine.resources.loadRealOnes = false;
  const std::string on =
      "<QUERYpl>select</QUERYpl><clipsPAth>c:\\clips</clipsPAth><runMySQL>vklop</runMySQL>"
      "<cryptoPass>p\x8A</cryptoPass><mysqlConnect>host=db</mysqlConnect>";
  const TextView builtInPass = u"kqv5830tyemxwu71";
  const struct {
    const char* name;
    std::optional<std::string> configuration;
    TextView cryptoPass;
    std::vector<Text> connectTexts{};
    TextView clipsPath{};
    TextView queryText{};
  } cases[] = {
      {"shipped", shipped, shippedPass},
      {"none", std::nullopt, builtInPass, {u""}},
      {"off in words", "<cryptoPass></cryptoPass><runMySQL>Off</runMySQL>", builtInPass},
      {"all on", on, u"p\u0160", {u"host=db"}, u"c:\\clips", u"select"},
      {"torn", "<runMySQL>0</runMySQL><cryptoPass>MQ7R", builtInPass},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    machine.resources.numbered.clear();
    if (row.configuration) machine.resources.numbered[101] = *row.configuration;
    // A second instance, which also finds no database, gives up the shared instances, but not the start.
    for (const bool second : {false, true}) {
      machine.environment.otherInstance = second;
      machine.database.fails = second;
      machine.database.connectTexts.clear();
      const auto instance = std::make_shared<int>();
      toolkit.setInstance(ToolkitClass::Math, instance);
      ProgramValues values;
      bool shown = false;
      startUpMod::Main(toolkit, values, [&] {
        shown = true;
        EXPECT_EQ(values.runMode, RunMode::Built);
        EXPECT_EQ(values.configText, machine.codePage.decode(row.configuration.value_or("")));
        EXPECT_EQ(values.workKey, toolkit.codeCod().EnCodeLight(row.cryptoPass, u"", true));
        EXPECT_EQ(values.clipsPath, row.clipsPath);
        EXPECT_EQ(values.queryText, row.queryText);
        EXPECT_EQ(values.useDatabase, !row.connectTexts.empty());
        EXPECT_EQ(values.queries.size(), values.useDatabase ? 101U : 0U);
        EXPECT_EQ(machine.database.connectTexts, row.connectTexts);
        EXPECT_EQ(instance.use_count(), second ? 1 : 2);
      });
      EXPECT_TRUE(shown);
    }
  }
  EXPECT_EQ(toolkit.variables().getVar(u"_now"), u"14.03.2026 12:00:00");
  EXPECT_TRUE(toolkit.variables().commandList().starts_with(u":File;"));
  EXPECT_TRUE(toolkit.values().temporaryFolder.ends_with(u"\\temp\\"));
}

TEST_F(StartUp, SetsTheFolders) {
  const struct {
    const char* name;
    std::map<Text, Text> variables;
    Text scriptFolder;
    Text systemTemporaryFolder = u"\\";
    Text programFolder = u"C:\\My g\u00E1mes\\Five";
  } cases[] = {
      {"nothing set", {}, u"\\"},
      {"separators at the end", {{u"TEMP", u"C:\\T\\"}}, u"\\", u"C:\\T\\\\", u"C:\\My g\u00E1mes\\Five\\"},
      {"separator at the start", {{u"TEMP", u"\\T"}}, u"\\", u"\\T"},
      {"path", {{u"SCRIPT_PATH", u"/www//a///b"}}, u"\\www\\a\\\\b\\"},
      {"file", {{u"SCRIPT_FILENAME", u"D:/w/a.bas"}, {u"SCRIPT_PATH", u"no"}}, u"D:\\w\\"},
      {"bare file", {{u"SCRIPT_FILENAME", u"a.bas"}, {u"SCRIPT_PATH", u"E:\\"}}, u"E:\\"},
      {"web", {{u"APPL_PHYSICAL_PATH", u"W:\\"}, {u"SCRIPT_FILENAME", u"/no/"}}, u"W:\\"},
  };
  const ToolkitValues& paths = toolkit.values();
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    machine.environment.variables = row.variables;
    machine.environment.folder = row.programFolder;
    startUpMod::setupPaths(toolkit, RunMode::Built);
    EXPECT_EQ(paths.applicationFolder, u"C:\\My g\u00E1mes\\Five\\");
    EXPECT_EQ(paths.temporaryFolder, u"C:\\My g\u00E1mes\\Five\\temp\\");
    EXPECT_EQ(paths.scriptsFolder, u"C:\\My g\u00E1mes\\Five\\scripts\\");
    EXPECT_EQ(toUtf8(paths.systemTemporaryFolder), toUtf8(row.systemTemporaryFolder));
    EXPECT_EQ(toUtf8(paths.scriptFolder), toUtf8(row.scriptFolder));
  }
  EXPECT_EQ(paths.lineBreak, u"\r\n");
  EXPECT_EQ(paths.startTime, machine.clock.date);
  startUpMod::setupPaths(toolkit, RunMode::InDevelopment);
  EXPECT_TRUE(paths.scriptFolder.starts_with(u"\\\\"));
}

}  // namespace
}  // namespace fiar
