#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "gui/support/child_process.h"
#include "gui/support/screen.h"

namespace fiar::gui {

/// A window as Windows knows it.
struct WindowInfo {
  long long number = 0;
  long long container = 0;  ///< 0: a window of its own
  bool visible = false;
  bool minimised = false;
  bool focused = false;
  bool checked = false;
  Area whole;  ///< on the screen, with the frame that Windows thinks it has
  Area area;   ///< of its inside
  std::string kind;
  std::string text;
};

/// The hand inside Windows: one Windows program that answers the tests' questions about others. The processes
/// that it has started end with it. A request that fails throws std::runtime_error.
class Probe {
public:
  Probe();

  /// Starts a program; without some of the environment's variables when they are named. Returns its number.
  long start(const std::filesystem::path& program, const std::vector<std::string>& unset = {});
  /// Nothing while the process runs.
  std::optional<long> exitCode(long process);
  /// Ends a process at once.
  void stop(long process);

  /// The windows of a process that are seen, each followed by all that it contains.
  std::vector<WindowInfo> windows(long process);
  void post(const WindowInfo& window, unsigned message, long long wParam = 0, long long lParam = 0);
  /// Asks a window to be so large, with its frame.
  void resize(const WindowInfo& window, int width, int height);
  /// Tells a window that it is now on a monitor of so many dots per inch, where `area` would suit it.
  void changeDpi(long process, const WindowInfo& window, int dotsPerInch, Area area);

  /// Replaces a custom resource of a program by a file's content.
  /// \param name a name, or a number as in "#102".
  void changeResource(const std::filesystem::path& program, const std::string& name,
                      const std::filesystem::path& content);

private:
  std::vector<std::string> ask(const std::vector<std::string>& words);

  ChildProcess process_;
};

}  // namespace fiar::gui
