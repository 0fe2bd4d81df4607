#pragma once

#include <array>
#include <memory>

#include "platform/platform.h"
#include "toolkit/variable_store.h"

namespace fiar {

class clsZantorBas;
class clsZantorCodeCod;
class clsZantorFile;
class clsZantorMail;
class clsZantorXml;

/// The toolkit's classes in the order in which their shared instances are released.
enum class ToolkitClass : std::size_t { Bas, Api, Mail, File, Web, Xml, CodeCod, Math };

/// The toolkit's program-wide values, all empty until start-up fills them in. Folders end in "\".
struct ToolkitValues {
  Text applicationFolder;
  Text temporaryFolder;
  Text systemTemporaryFolder;
  Text scriptFolder;   ///< of the web script that runs the program; only "\" where there is none
  Text scriptsFolder;  ///< of the toolkit's own scripts
  Text lineBreak;
  DateTime startTime;
};

/// The toolkit of one process: its variables, its program-wide values, and one shared instance of each class,
/// created on first use. Every reference that it gives stays good until releaseToolkit().
class Toolkit {
public:
  /// \param platform the machine; what it refers to outlives the toolkit.
  explicit Toolkit(const Platform& platform);
  Toolkit(const Toolkit&) = delete;
  Toolkit& operator=(const Toolkit&) = delete;
  Toolkit(Toolkit&&) = delete;
  Toolkit& operator=(Toolkit&&) = delete;
  ~Toolkit();

  const Platform& platform() const { return platform_; }
  VariableStore& variables() { return variables_; }
  ToolkitValues& values() { return values_; }

  clsZantorBas& bas();
  clsZantorFile& file();
  clsZantorMail& mail();
  clsZantorXml& xml();
  clsZantorCodeCod& codeCod();

  /// Sets the shared instances to none, in the order of ToolkitClass; the next use of a class creates it
  /// anew. The variables and values stay.
  void releaseToolkit();

  /// Makes an object the shared instance of a class: the way in for the classes that this program lacks (Api,
  /// Web, Math). The object must be of the class itself where the toolkit has an accessor for it.
  void setInstance(ToolkitClass which, std::shared_ptr<void> instance);

private:
  static constexpr std::size_t kClasses = static_cast<std::size_t>(ToolkitClass::Math) + 1;

  template <class Type, class... Arguments>
  Type& instance(ToolkitClass which, Arguments&... arguments);

  Platform platform_;
  VariableStore variables_;
  ToolkitValues values_;
  std::array<std::shared_ptr<void>, kClasses> instances_;  ///< null: not created
};

}  // namespace fiar
