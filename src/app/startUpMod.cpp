#include "app/startUpMod.h"

#include <exception>

#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorXml.h"

namespace fiar::startUpMod {
namespace {

constexpr unsigned kConfigurationResource = 101;
constexpr std::size_t kQueries = 101;
constexpr char16_t kFolderEnd = u'\\';
constexpr TextView kBuiltInKey = u"kqv5830tyemxwu71";
constexpr TextView kDevelopmentShare = u"\\\\devhost\\webscripts\\";

Text withFolderEnd(Text folder) {
  if (!folder.ends_with(kFolderEnd)) folder += kFolderEnd;
  return folder;
}

Text systemTemporaryFolder(const Environment& environment) {
  Text folder = environment.variable(u"TEMP");
  // Deliberate: one would expect the last character to be looked at, as withFolderEnd() does.
  if (!folder.starts_with(kFolderEnd)) folder += kFolderEnd;
  return folder;
}

Text folderOf(TextView file) {
  return Text(file.substr(0, file.find_last_of(u"\\/") + 1));
}

// The web server says where its script is; servers differ in the variable that says so.
Text scriptFolder(const Environment& environment) {
  Text folder = environment.variable(u"APPL_PHYSICAL_PATH");
  if (folder.empty()) folder = folderOf(environment.variable(u"SCRIPT_FILENAME"));
  if (folder.empty()) folder = environment.variable(u"SCRIPT_PATH");
  return withFolderEnd(replaced(replaced(folder, u"/", u"\\"), u"\\\\", u"\\"));
}

Text configuration(const Platform& platform) {
  const std::optional<std::string> bytes = platform.resources.custom(kConfigurationResource);
  return bytes ? platform.codePage.decode(*bytes) : Text();
}

// The setting of that name in the configuration text; `otherwise` where it is absent or empty.
Text setting(Toolkit& toolkit, TextView name, TextView otherwise) {
  Text tagParams;
  return toolkit.xml().getTag(toolkit.values().configText, name, tagParams, otherwise, otherwise);
}

}  // namespace

void Main(Toolkit& toolkit, const std::function<void()>& showMainFrm) {
  const Platform& platform = toolkit.platform();
  ProgramValues& values = toolkit.values();
  // Deliberate: one would expect a second instance to be refused.
  if (platform.environment.otherInstanceRunning()) toolkit.releaseToolkit();
  values.runMode = toolkit.bas().IsRunningInIde() ? RunMode::InDevelopment : RunMode::Built;
  setupPaths(toolkit);
  toolkit.variables().initBuiltInVars();
  toolkit.variables().buildCommandList();
  values.configText = configuration(platform);
  values.workKey = toolkit.codeCod().EnCodeLight(setting(toolkit, u"cryptoPass", kBuiltInKey), u"", true);
  values.clipsPath = setting(toolkit, u"clipsPAth", u"");
  // Deliberate: a configuration that does not say switches the database on; one would expect it off.
  values.useDatabase = clsZantorBas::GetTF(setting(toolkit, u"runMySQL", u"1"));
  values.queryText = setting(toolkit, u"queryPL", u"");
  if (values.useDatabase) connectDatabase(toolkit);
  showMainFrm();
}

void setupPaths(Toolkit& toolkit) {
  const Platform& platform = toolkit.platform();
  ProgramValues& values = toolkit.values();
  values.applicationFolder = withFolderEnd(platform.environment.programFolder());
  values.temporaryFolder = values.applicationFolder + u"temp\\";
  values.systemTemporaryFolder = systemTemporaryFolder(platform.environment);
  values.scriptFolder = scriptFolder(platform.environment);
  if (values.runMode == RunMode::InDevelopment) values.scriptFolder = kDevelopmentShare;
  values.scriptsFolder = values.applicationFolder + u"scripts\\";
  values.lineBreak = u"\r\n";
  values.startTime = platform.clock.now();
}

void connectDatabase(Toolkit& toolkit) {
  toolkit.values().queries.assign(kQueries, DatabaseQuery());
  try {
    toolkit.platform().database.open(setting(toolkit, u"mysqlConnect", u""));
  } catch (const std::exception&) {
    // The game goes on without a database, which it never uses.
  }
}

}  // namespace fiar::startUpMod
