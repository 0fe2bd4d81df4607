#include "app/startUpMod.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fake_socket.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorMail.h"

namespace fiar {
namespace {

struct Start {
  const char* name;
  std::optional<std::string> configuration;
  TextView cryptoPass = u"kqv5830tyemxwu71";
  TextView clipsPath{};
  TextView queryText{};
  std::vector<Text> connectTexts{};
  bool otherInstance = false;
  bool databaseFails = false;
};

TEST(StartUp, SetsTheProgramWideValuesAndShowsTheWindow) {
  test::FakePlatform shipped;
  shipped.resources.loadRealOnes = true;
  const std::optional<std::string> shippedText = shipped.resources.custom(101);
  const TextView shippedPass = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  EXPECT_EQ(shippedText,
            "<mysqlConnect>\r\n</mysqlConnect>\r\n<cryptoPass>MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK"
            "</cryptoPass>\r\n<runMySQL>0</runMySQL>\r\n");
  const std::string on =
      "<QUERYpl>select</QUERYpl><clipsPAth>c:\\clips</clipsPAth><runMySQL>vklop</runMySQL>"
      "<cryptoPass>p\x8A</cryptoPass><mysqlConnect>host=db</mysqlConnect>";
  const Start cases[] = {
      {"shipped", shippedText, shippedPass},
      {"second instance", shippedText, shippedPass, u"", u"", {}, true},
      {"no configuration", std::nullopt, u"kqv5830tyemxwu71", u"", u"", {u""}},
      {"off in words", "<cryptoPass></cryptoPass><runMySQL>Off</runMySQL>"},
      {"all on", on, u"p\u0160", u"c:\\clips", u"select", {u"host=db"}},
      {"no connection", on, u"p\u0160", u"c:\\clips", u"select", {u"host=db"}, false, true},
      {"torn", "<runMySQL>0</runMySQL><cryptoPass>MQ7R"},
  };
  for (const Start& c : cases) {
    SCOPED_TRACE(c.name);
    test::FakePlatform machine;
    const test::FakeNetwork network(machine);
    machine.environment.otherInstance = c.otherInstance;
    machine.database.fails = c.databaseFails;
    if (c.configuration) machine.resources.numbered[101] = *c.configuration;
    Toolkit toolkit(machine.platform);
    toolkit.mail().subject = u"of an instance that may be released";
    bool shown = false;
    startUpMod::Main(toolkit, [&] {
      shown = true;
      const ProgramValues& values = toolkit.values();
      EXPECT_EQ(values.runMode, RunMode::Built);
      EXPECT_EQ(values.configText, machine.codePage.decode(c.configuration.value_or("")));
      EXPECT_EQ(values.workKey, toolkit.codeCod().EnCodeLight(c.cryptoPass, u"", true));
      EXPECT_EQ(values.clipsPath, c.clipsPath);
      EXPECT_EQ(values.queryText, c.queryText);
      EXPECT_EQ(values.useDatabase, !c.connectTexts.empty());
      EXPECT_EQ(values.queries.size(), c.connectTexts.empty() ? 0U : 101U);
      EXPECT_EQ(machine.database.connectTexts, c.connectTexts);
      EXPECT_EQ(toolkit.variables().getVar(u"_now"), u"14.03.2026 12:00:00");
      EXPECT_TRUE(toolkit.variables().commandList().starts_with(u":File;"));
      EXPECT_EQ(toolkit.mail().subject.text().empty(), c.otherInstance);
    });
    EXPECT_TRUE(shown);
  }
}

TEST(StartUp, SetsTheFolders) {
  const struct {
    const char* name;
    std::map<Text, Text> variables;
    Text systemTemporaryFolder;
    Text scriptFolder;
    Text programFolder = u"C:\\My g\u00E1mes\\Five";
  } cases[] = {
      {"nothing set", {}, u"\\", u"\\"},
      {"separators at the end", {{u"TEMP", u"C:\\T\\"}}, u"C:\\T\\\\", u"\\", u"C:\\My g\u00E1mes\\Five\\"},
      {"separator at the start", {{u"TEMP", u"\\T"}}, u"\\T", u"\\"},
      {"path", {{u"SCRIPT_PATH", u"/www//a///b"}}, u"\\", u"\\www\\a\\\\b\\"},
      {"file", {{u"SCRIPT_FILENAME", u"D:/w/a.bas"}, {u"SCRIPT_PATH", u"no"}}, u"\\", u"D:\\w\\"},
      {"bare file", {{u"SCRIPT_FILENAME", u"a.bas"}, {u"SCRIPT_PATH", u"E:\\"}}, u"\\", u"E:\\"},
      {"web", {{u"APPL_PHYSICAL_PATH", u"W:\\"}, {u"SCRIPT_FILENAME", u"/no/"}}, u"\\", u"W:\\"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
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
