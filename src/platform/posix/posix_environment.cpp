#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/platform.h"

namespace fiar {
namespace {

class PosixEnvironment final : public Environment {
public:
  Text variable(TextView name) const override {
    // The program has one thread, and nothing in it changes the environment.
    const char* const value = std::getenv(toUtf8(name).c_str());  // NOLINT(concurrency-mt-unsafe)
    return value == nullptr ? Text() : fromUtf8(value);
  }

  Text programFolder() const override {
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    return fromUtf8(program.parent_path().string());
  }

  // The window exists only on Windows, so there is no instance to look for.
  bool otherInstanceRunning() const override { return false; }
};

}  // namespace

const Environment& systemEnvironment() {
  static const PosixEnvironment environment;
  return environment;
}

}  // namespace fiar
