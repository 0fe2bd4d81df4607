#pragma once

#include <sys/types.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace fiar::gui {

/// A program of this machine that runs beside the test. Its standard input ends, and it is made to end, with
/// the object; whatever happens to the test, it gets an end of input and, later, SIGKILL.
class ChildProcess {
public:
  /// Starts a program by its arguments, the first one its file or a name to be found in $PATH. It sees this
  /// process's environment and error output. Throws std::system_error when it cannot be started.
  explicit ChildProcess(const std::vector<std::string>& arguments);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ChildProcess(ChildProcess&&) = delete;
  ChildProcess& operator=(ChildProcess&&) = delete;
  ~ChildProcess();

  void writeLine(const std::string& line);
  /// The next line without its end; throws std::runtime_error when the output has ended or nothing comes.
  std::string readLine();
  /// Whatever it has written by now, as it is.
  std::string readAvailable();

private:
  /// Waits until there is something to read or the output has ended.
  bool awaitOutput(int milliseconds) const;
  /// Takes what is there; false at the end of the output.
  bool fill();

  pid_t process_ = -1;
  int input_ = -1;   ///< the child's input
  int output_ = -1;  ///< the child's output
  std::string unread_;
};

}  // namespace fiar::gui
