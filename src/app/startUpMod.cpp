#include "app/startUpMod.h"

#include <algorithm>
#include <exception>
#include <utility>

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
  // Deliberate: it is the first character that is looked at.
  if (!folder.starts_with(kFolderEnd)) folder += kFolderEnd;
  return folder;
}

Text folderOf(TextView file) {
  return Text(file.substr(0, file.find_last_of(u"\\/") + 1));
}

// "\" for "/" and for each pair of "\", from left to right.
Text withPlainSeparators(Text path) {
  std::replace(path.begin(), path.end(), u'/', kFolderEnd);
  for (std::size_t at = path.find(u"\\\\"); at != Text::npos; at = path.find(u"\\\\", at + 1)) {
    path.erase(at, 1);
  }
  return path;
}

// The web server says where its script is; it has one variable or another for that.
Text scriptFolder(const Environment& environment) {
  Text folder = environment.variable(u"APPL_PHYSICAL_PATH");
  if (folder.empty()) folder = folderOf(environment.variable(u"SCRIPT_FILENAME"));
  if (folder.empty()) folder = environment.variable(u"SCRIPT_PATH");
  return withFolderEnd(withPlainSeparators(std::move(folder)));
}

Text configuration(const Platform& platform) {
  const std::optional<std::string> bytes = platform.resources.custom(kConfigurationResource);
  return bytes ? platform.codePage.decode(*bytes) : Text();
}

// The setting of that name; `otherwise` where it is absent or empty.
Text setting(Toolkit& toolkit, const Text& configText, TextView name, TextView otherwise) {
  Text tagParams;
  return toolkit.xml().getTag(configText, name, tagParams, otherwise, otherwise);
}

}  // namespace

void Main(Toolkit& toolkit, ProgramValues& values, const std::function<void()>& showMainFrm) {
  const Platform& platform = toolkit.platform();
  // Deliberate: a second instance is not refused.
  if (platform.environment.otherInstanceRunning()) toolkit.releaseToolkit();
  values.runMode = toolkit.bas().IsRunningInIde() ? RunMode::InDevelopment : RunMode::Built;
  setupPaths(toolkit, values.runMode);
  toolkit.variables().initBuiltInVars();
  toolkit.variables().buildCommandList();
  values.configText = configuration(platform);
  const Text cryptoPass = setting(toolkit, values.configText, u"cryptoPass", kBuiltInKey);
  values.workKey = toolkit.codeCod().EnCodeLight(cryptoPass, u"", true);
  values.clipsPath = setting(toolkit, values.configText, u"clipsPAth", u"");
  // Deliberate: a configuration that does not say switches the database on.
  values.useDatabase = clsZantorBas::GetTF(setting(toolkit, values.configText, u"runMySQL", u"1"));
  values.queryText = setting(toolkit, values.configText, u"queryPL", u"");
  if (values.useDatabase) connectDatabase(toolkit, values);
  showMainFrm();
}

void setupPaths(Toolkit& toolkit, RunMode runMode) {
  const Platform& platform = toolkit.platform();
  ToolkitValues& paths = toolkit.values();
  paths.applicationFolder = withFolderEnd(platform.environment.programFolder());
  paths.temporaryFolder = paths.applicationFolder + u"temp\\";
  paths.systemTemporaryFolder = systemTemporaryFolder(platform.environment);
  paths.scriptFolder = scriptFolder(platform.environment);
  if (runMode == RunMode::InDevelopment) paths.scriptFolder = kDevelopmentShare;
  paths.scriptsFolder = paths.applicationFolder + u"scripts\\";
  paths.lineBreak = u"\r\n";
  paths.startTime = platform.clock.now();
}

void connectDatabase(Toolkit& toolkit, ProgramValues& values) {
  values.queries.assign(kQueries, DatabaseQuery());
  try {
    toolkit.platform().database.open(setting(toolkit, values.configText, u"mysqlConnect", u""));
  } catch (const std::exception&) {
    // The game goes on without a database, which it never uses.
  }
}

}  // namespace fiar::startUpMod
