#include "gui/support/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "gui/support/screen.h"

namespace fiar::gui {
namespace {

constexpr int kAnswerMilliseconds = 60'000;

void requireZero(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

std::array<int, 2> makePipe() {
  std::array<int, 2> ends{};
  // Not inherited: the children started later would keep each other's input open.
  requireZero(pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno, "pipe2");
  return ends;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments)
    : input_(makePipe()), output_(makePipe()) {
  // Writing to a child that has ended is an error like any other.
  signal(SIGPIPE, SIG_IGN);
  // It ends with this process even if that is killed.
  std::vector<std::string> command{"setpriv", "--pdeathsig", "TERM"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<char*> words;
  words.reserve(command.size() + 1);
  for (const std::string& argument : command) words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  requireZero(posix_spawn_file_actions_init(&actions), "posix_spawn_file_actions_init");
  posix_spawn_file_actions_adddup2(&actions, input_[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output_[1], STDOUT_FILENO);
  const int error = posix_spawnp(&process_, words.front(), &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(input_[0]);
  close(output_[1]);
  requireZero(error, words.front());
}

ChildProcess::~ChildProcess() {
  close(input_[1]);
  close(output_[0]);
  kill(process_, SIGTERM);
  const auto hasEnded = [&] { return waitpid(process_, nullptr, WNOHANG) != 0; };
  if (eventually(hasEnded)) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

void ChildProcess::writeLine(const std::string& line) {
  const std::string whole = line + '\n';
  if (write(input_[1], whole.data(), whole.size()) != static_cast<ssize_t>(whole.size())) {
    throw std::runtime_error("a program that the test needs has ended");
  }
}

std::string ChildProcess::readLine() {
  while (unread_.find('\n') == std::string::npos) {
    if (!awaitOutput(kAnswerMilliseconds) || !fill()) {
      throw std::runtime_error("a program that the test needs does not answer");
    }
  }
  const std::size_t end = unread_.find('\n');
  std::string line = unread_.substr(0, end);
  unread_.erase(0, end + 1);
  std::erase(line, '\r');
  return line;
}

std::string ChildProcess::readAvailable() {
  while (awaitOutput(0) && fill()) {
  }
  return std::exchange(unread_, {});
}

bool ChildProcess::awaitOutput(int milliseconds) const {
  pollfd waiting{.fd = output_[0], .events = POLLIN, .revents = 0};
  return poll(&waiting, 1, milliseconds) > 0;
}

bool ChildProcess::fill() {
  std::array<char, 65536> block{};
  const ssize_t count = read(output_[0], block.data(), block.size());
  if (count <= 0) return false;
  unread_.append(block.data(), static_cast<std::size_t>(count));
  return true;
}

}  // namespace fiar::gui
