#include "toolkit/clsZantorFile.h"

#include <array>

#include "platform/files.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr int kMostErrors = 5;
constexpr double kPauseSeconds = 0.1;

}  // namespace

void clsZantorFile::AppendToFile(TextView fileName, TextView data, std::int16_t binaryMode) {
  std::string bytes = toolkit_.platform().codePage.encode(data);
  OpenFile file;
  int errors = 0;
  const auto attempt = [&](const auto& step) {
    while (!step()) {
      ++errors;
      toolkit_.bas().DelayEvents(kPauseSeconds);
      if (errors >= kMostErrors) return;
      // Deliberate: one would expect the file to be opened anew, but the step alone is repeated on the closed
      // file, so that it fails until the errors are used up.
      file.reset();
    }
  };
  attempt([&] {
    file = openToAppend(fileName);
    return file != nullptr;
  });
  if (binaryMode == 0) {
    bytes += "\r\n";
  } else {
    attempt([&] { return file != nullptr && std::fseek(file.get(), 0, SEEK_END) == 0; });
  }
  attempt([&] {
    return file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
           std::fflush(file.get()) == 0;
  });
}

std::string clsZantorFile::fileContent(TextView path) {
  const OpenFile file = openToRead(path);
  if (file == nullptr) return {};
  std::string content;
  std::array<char, 16384> part{};
  for (std::size_t length = 0; (length = std::fread(part.data(), 1, part.size(), file.get())) > 0;) {
    content.append(part.data(), length);
  }
  return content;
}

TextView clsZantorFile::fileNamePart(TextView path) {
  return path.substr(path.find_last_of(u"\\/:") + 1);
}

}  // namespace fiar
