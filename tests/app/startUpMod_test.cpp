#include "app/startUpMod.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_platform.h"
#include "toolkit/clsZantorCodeCod.h"

namespace fiar {
namespace {

using startUpMod::ProgramValues;
using startUpMod::RunMode;

// The fake machine with what start-up asks of it written down in order.
class RecordingMachine final : public Environment, public Resources, public Database {
public:
  test::FakePlatform fake;
  mutable std::string calls;
  Platform platform{fake.clock,  fake.codePage, fake.regional, *this, *this,
                    fake.random, fake.sound,    fake.events,   *this};

  Text variable(TextView name) const override {
    return note(std::string(name.begin(), name.end()), fake.environment.variable(name));
  }
  Text programFolder() const override { return note("folder", fake.environment.programFolder()); }
  bool otherInstanceRunning() const override {
    return note("other instance?", fake.environment.otherInstanceRunning());
  }
  std::optional<std::string> custom(unsigned number) const override {
    return note("resource " + std::to_string(number), fake.resources.custom(number));
  }
  std::optional<std::string> custom(TextView name) const override {
    return note(std::string(name.begin(), name.end()), fake.resources.custom(name));
  }
  void open(TextView connectText) override {
    note("open " + std::string(connectText.begin(), connectText.end()), 0);
    fake.database.open(connectText);
  }

  template <class Value>
  Value note(const std::string& call, Value value) const {
    calls += (calls.empty() ? "" : ", ") + call;
    return value;
  }
};

struct Start {
  const char* name;
  std::optional<std::string> configuration;
  std::string calls;
  TextView cryptoPass = u"kqv5830tyemxwu71";
  bool useDatabase = false;
  TextView clipsPath{};
  TextView queryText{};
  bool otherInstance = false;
  bool databaseFails = false;
};

TEST(StartUp, TakesItsStepsInOrder) {
  test::FakePlatform shipped;
  shipped.resources.loadRealOnes = true;
  const std::optional<std::string> shippedText = shipped.resources.custom(101);
  const TextView shippedPass = u"MQ7R2K9TXB4NPL8D3VHM6CJZ5YF1GSAE0UOIRNTK";
  EXPECT_EQ(shippedText, "<mysqlConnect>\r\n</mysqlConnect>\r\n<cryptoPass>" +
                             std::string(shippedPass.begin(), shippedPass.end()) +
                             "</cryptoPass>\r\n<runMySQL>0</runMySQL>\r\n");
  const std::string toVariables =
      "folder, TEMP, APPL_PHYSICAL_PATH, SCRIPT_FILENAME, SCRIPT_PATH, resource 101, ";
  const std::string usual = "other instance?, " + toVariables;
  const std::string on =
      "<QUERYpl>select</QUERYpl><clipsPAth>c:\\clips</clipsPAth><runMySQL>vklop</runMySQL>"
      "<cryptoPass>p\x8A</cryptoPass><mysqlConnect>host=db</mysqlConnect>";
  const std::vector<Start> cases{
      {"shipped", shippedText, usual + "show", shippedPass},
      {"second instance", shippedText, "other instance?, release, " + toVariables + "show", shippedPass,
       false, u"", u"", true},
      {"no configuration", std::nullopt, usual + "open , show", u"kqv5830tyemxwu71", true},
      {"off in words", "<cryptoPass></cryptoPass><runMySQL>Off</runMySQL>", usual + "show"},
      {"all on", on, usual + "open host=db, show", u"p\u0160", true, u"c:\\clips", u"select"},
      {"no connection", on, usual + "open host=db, show", u"p\u0160", true, u"c:\\clips", u"select", false,
       true},
      {"torn", "<runMySQL>0</runMySQL><cryptoPass>MQ7R", usual + "show"},
  };
  for (const Start& c : cases) {
    SCOPED_TRACE(c.name);
    RecordingMachine machine;
    machine.fake.environment.otherInstance = c.otherInstance;
    machine.fake.database.fails = c.databaseFails;
    if (c.configuration) machine.fake.resources.numbered[101] = *c.configuration;
    Toolkit toolkit(machine.platform);
    toolkit.setInstance(ToolkitClass::Math, std::shared_ptr<void>(&machine, [&machine](void* /*instance*/) {
                          machine.note("release", 0);
                        }));
    ProgramValues values;
    std::string calls;
    startUpMod::Main(toolkit, values, [&] {
      machine.note("show", 0);
      calls = machine.calls;
    });
    EXPECT_EQ(calls, c.calls);
    EXPECT_EQ(values.runMode, RunMode::Built);
    EXPECT_EQ(values.configText, machine.fake.codePage.decode(c.configuration.value_or("")));
    EXPECT_EQ(values.workKey, toolkit.codeCod().EnCodeLight(c.cryptoPass, u"", true));
    EXPECT_EQ(values.clipsPath, c.clipsPath);
    EXPECT_EQ(values.queryText, c.queryText);
    EXPECT_EQ(values.useDatabase, c.useDatabase);
    EXPECT_EQ(values.queries.size(), c.useDatabase ? 101U : 0U);
    EXPECT_EQ(toolkit.variables().getVar(u"_now"), u"14.03.2026 12:00:00");
    EXPECT_TRUE(toolkit.variables().commandList().starts_with(u":File;"));
  }
}

TEST(StartUp, SetsTheFolders) {
  struct Case {
    const char* name;
    std::map<Text, Text> variables;
    Text systemTemporaryFolder;
    Text scriptFolder;
    Text programFolder = u"C:\\My g\u00E1mes\\Five";
  };
  const std::vector<Case> cases{
      {"nothing set", {}, u"\\", u"\\"},
      {"separators at the end", {{u"TEMP", u"C:\\T\\"}}, u"C:\\T\\\\", u"\\", u"C:\\My g\u00E1mes\\Five\\"},
      {"separator at the start", {{u"TEMP", u"\\T"}}, u"\\T", u"\\"},
      {"path", {{u"SCRIPT_PATH", u"/www//a///b"}}, u"\\", u"\\www\\a\\\\b\\"},
      {"file", {{u"SCRIPT_FILENAME", u"D:/w/a.bas"}, {u"SCRIPT_PATH", u"no"}}, u"\\", u"D:\\w\\"},
      {"bare file", {{u"SCRIPT_FILENAME", u"a.bas"}, {u"SCRIPT_PATH", u"E:\\"}}, u"\\", u"E:\\"},
      {"web", {{u"APPL_PHYSICAL_PATH", u"W:\\"}, {u"SCRIPT_FILENAME", u"/no/"}}, u"\\", u"W:\\"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    test::FakePlatform machine;
    machine.environment.variables = c.variables;
    machine.environment.folder = c.programFolder;
    Toolkit toolkit(machine.platform);
    startUpMod::setupPaths(toolkit, RunMode::Built);
    const ToolkitValues& paths = toolkit.values();
    EXPECT_EQ(paths.applicationFolder, u"C:\\My g\u00E1mes\\Five\\");
    EXPECT_EQ(paths.temporaryFolder, u"C:\\My g\u00E1mes\\Five\\temp\\");
    EXPECT_EQ(paths.scriptsFolder, u"C:\\My g\u00E1mes\\Five\\scripts\\");
    EXPECT_EQ(paths.systemTemporaryFolder, c.systemTemporaryFolder);
    EXPECT_EQ(paths.scriptFolder, c.scriptFolder);
    EXPECT_EQ(paths.lineBreak, u"\r\n");
    EXPECT_EQ(paths.startTime, machine.clock.date);
    startUpMod::setupPaths(toolkit, RunMode::InDevelopment);
    EXPECT_TRUE(paths.scriptFolder.starts_with(u"\\\\"));
  }
}

}  // namespace
}  // namespace fiar
