#include "gui/support/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <system_error>

namespace fiar::gui {
namespace {

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

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
  // Writing to a child that has ended is an error like any other.
  signal(SIGPIPE, SIG_IGN);
  // It ends with this process even if that is killed.
  std::vector<std::string> command{"setpriv", "--pdeathsig", "TERM"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<char*> words;
  words.reserve(command.size() + 1);
  for (std::string& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  const auto input = makePipe();
  const auto output = makePipe();
  input_.reset(fdopen(input[1], "w"));
  output_.reset(fdopen(output[0], "r"));
  posix_spawn_file_actions_t actions;
  requireZero(posix_spawn_file_actions_init(&actions), "posix_spawn_file_actions_init");
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  const int error = posix_spawnp(&process_, words.front(), &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  requireZero(error, words.front());
}

ChildProcess::~ChildProcess() {
  input_.reset();
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
}

void ChildProcess::writeLine(const std::string& line) {
  if (std::fputs((line + '\n').c_str(), input_.get()) < 0 || std::fflush(input_.get()) != 0) {
    throw std::runtime_error("a program that the test needs has ended");
  }
}

std::string ChildProcess::readLine() {
  std::string line;
  for (int character = 0; (character = std::fgetc(output_.get())) != '\n';) {
    if (character == EOF) throw std::runtime_error("a program that the test needs has ended");
    if (character != '\r') line += static_cast<char>(character);
  }
  return line;
}

}  // namespace fiar::gui
