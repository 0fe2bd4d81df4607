#pragma once

#include <sys/types.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace fiar::gui {

/// A program of this machine that runs beside the test. Its standard input ends, and it is made to end, with
/// the object, or with this process if that comes to a sudden end.
class ChildProcess {
public:
  /// Starts a program by its arguments, the first one its file or a name to be found in $PATH. It sees this
  /// process's environment and error output. One that cannot be started is one that has ended at once.
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
  // Pipes; the child has taken the first's reading end and the second's writing end.
  std::array<int, 2> input_;
  std::array<int, 2> output_;
  std::string unread_;
};

}  // namespace fiar::gui
