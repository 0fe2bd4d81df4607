#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/platform.h"
#include "toolkit/variable_store.h"

namespace fiar {

class clsZantorBas;
class clsZantorCodeCod;
class clsZantorFile;
class clsZantorMail;
class clsZantorXml;

/// How the program runs.
enum class RunMode : std::int16_t { Unknown = 0, Built = 2, InDevelopment = 3 };

/// The program-wide values, all empty until start-up fills them in. Folders end in "\".
struct ProgramValues {
  RunMode runMode = RunMode::Unknown;

  Text applicationFolder;
  Text temporaryFolder;
  Text systemTemporaryFolder;
  Text scriptFolder;   ///< of the web script that runs the program; only "\" where there is none
  Text scriptsFolder;  ///< of the toolkit's own scripts
  Text lineBreak;
  DateTime startTime;

  Text configText;  ///< the configuration as tagged text; empty where the program carries none
  Text workKey;     ///< in hexadecimal digits; never to be shown, written or logged
  Text clipsPath;
  bool useDatabase = false;
  Text queryText;
  std::vector<DatabaseQuery> queries;  ///< the connection's pool; empty where the database is off
};

/// The toolkit of one process: its variables, the program-wide values, and one shared instance of each class,
/// created on first use. Every reference that it gives stays good until releaseToolkit().
class Toolkit {
public:
  /// \param platform the machine; outlives the toolkit.
  explicit Toolkit(const Platform& platform);
  Toolkit(const Toolkit&) = delete;
  Toolkit& operator=(const Toolkit&) = delete;
  ~Toolkit();

  const Platform& platform() const { return platform_; }
  VariableStore& variables() { return variables_; }
  ProgramValues& values() { return values_; }

  clsZantorBas& bas();
  clsZantorFile& file();
  clsZantorMail& mail();
  clsZantorXml& xml();
  clsZantorCodeCod& codeCod();

  /// Releases the shared instances; the next use of a class creates it anew. The variables and values stay.
  void releaseToolkit();

private:
  const Platform& platform_;
  VariableStore variables_;
  ProgramValues values_;
  std::unique_ptr<clsZantorBas> bas_;
  std::unique_ptr<clsZantorMail> mail_;
  std::unique_ptr<clsZantorFile> file_;
  std::unique_ptr<clsZantorXml> xml_;
  std::unique_ptr<clsZantorCodeCod> codeCod_;
};

}  // namespace fiar
