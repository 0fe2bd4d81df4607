#include "gui/support/probe.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace fiar::gui {
namespace {

/// The value of an environment variable, or what it is by default.
std::string setting(const char* name, const std::string& byDefault) {
  const char* const value = std::getenv(name);
  return value == nullptr ? byDefault : value;
}

/// Where Windows programs find a file of this machine.
std::string windowsPath(const std::filesystem::path& file) {
  std::string path = "Z:" + std::filesystem::absolute(file).string();
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

}  // namespace

// Wine takes file names as the locale says.
Probe::Probe()
    : process_({"env", "LC_ALL=C.UTF-8", setting("WINE", "wine64"),
                setting("FIAR_WINDOW_PROBE", FIAR_WINDOW_PROBE)}) {}

long Probe::start(const std::filesystem::path& program, const std::vector<std::string>& unset) {
  std::vector<std::string> words{"start", windowsPath(program)};
  words.insert(words.end(), unset.begin(), unset.end());
  return std::stol(ask(words).at(0));
}

std::optional<long> Probe::exitCode(long process) {
  const auto answer = ask({"exit", std::to_string(process)});
  if (answer.empty()) return std::nullopt;
  return std::stol(answer.front());
}

void Probe::stop(long process) {
  ask({"stop", std::to_string(process)});
}

std::vector<WindowInfo> Probe::windows(long process) {
  std::vector<WindowInfo> windows;
  for (const std::string& line : ask({"windows", std::to_string(process)})) {
    WindowInfo& window = windows.emplace_back();
    std::istringstream words(line);
    words >> window.number >> window.container >> window.visible >> window.minimised >> window.focused >>
        window.checked;
    for (Area* area : {&window.whole, &window.area}) {
      words >> area->left >> area->top >> area->right >> area->bottom;
    }
    words.ignore();
    std::getline(words, window.kind, '\t');
    std::getline(words, window.text);
  }
  return windows;
}

void Probe::post(const WindowInfo& window, unsigned message, long long wParam, long long lParam) {
  ask({"post", std::to_string(window.number), std::to_string(message), std::to_string(wParam),
       std::to_string(lParam)});
}

void Probe::resize(const WindowInfo& window, int width, int height) {
  ask({"size", std::to_string(window.number), std::to_string(width), std::to_string(height)});
}

void Probe::changeDpi(long process, const WindowInfo& window, int dotsPerInch, Area area) {
  ask({"dpi", std::to_string(process), std::to_string(window.number), std::to_string(dotsPerInch),
       std::to_string(area.left), std::to_string(area.top), std::to_string(area.right),
       std::to_string(area.bottom)});
}

void Probe::changeResource(const std::filesystem::path& program, const std::string& name,
                           const std::filesystem::path& content) {
  ask({"resource", windowsPath(program), "CUSTOM", name, windowsPath(content)});
}

std::vector<std::string> Probe::ask(const std::vector<std::string>& words) {
  std::string request;
  for (const std::string& word : words) request += (request.empty() ? "" : "\t") + word;
  process_.writeLine(request);
  std::vector<std::string> answer;
  while (true) {
    std::string line = process_.readLine();
    if (line == ".") return answer;
    if (line.starts_with("! ")) throw std::runtime_error(line.substr(2) + " (" + request + ")");
    answer.push_back(std::move(line));
  }
}

}  // namespace fiar::gui
