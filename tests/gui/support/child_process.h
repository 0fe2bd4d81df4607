#pragma once

#include <sys/types.h>

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

  /// Throws std::runtime_error, as readLine() does, when the program has ended.
  void writeLine(const std::string& line);
  /// Waits for the next line of its output and returns it without its end.
  std::string readLine();

private:
  using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

  pid_t process_ = -1;
  Stream input_{nullptr, std::fclose};
  Stream output_{nullptr, std::fclose};
};

}  // namespace fiar::gui
