#include "toolkit/clsZantorFile.h"

#include <fstream>
#include <string>

#include "platform/files.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr int kMostErrors = 5;
constexpr double kPauseSeconds = 0.1;

// The steps of one append with the errors that they have had in common.
class Append {
public:
  Append(Toolkit& toolkit, TextView fileName) : toolkit_(toolkit), path_(nativePath(fileName)) {}

  void open() {
    attempt([this] {
      file_.open(path_, std::ios::binary | std::ios::app);
      return file_.is_open();
    });
  }

  void goToEnd() {
    attempt([this] { return file_.is_open() && file_.seekp(0, std::ios::end).good(); });
  }

  void write(const std::string& bytes) {
    attempt([this, &bytes] {
      file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
      return file_.flush().good();
    });
  }

private:
  template <class Step>
  void attempt(Step step) {
    while (!step()) {
      ++errors_;
      toolkit_.bas().DelayEvents(kPauseSeconds);
      if (errors_ >= kMostErrors) return;
      // Deliberate: a step after the opening is repeated on the closed file, so that it fails again until the
      // errors are used up.
      file_.close();
      file_.clear();
    }
  }

  Toolkit& toolkit_;
  std::filesystem::path path_;
  std::ofstream file_;
  int errors_ = 0;
};

}  // namespace

void clsZantorFile::AppendToFile(TextView fileName, TextView data, std::int16_t binaryMode) {
  std::string bytes = toolkit_.platform().codePage.encode(data);
  Append append(toolkit_, fileName);
  append.open();
  if (binaryMode == 0) {
    bytes += "\r\n";
  } else {
    append.goToEnd();
  }
  append.write(bytes);
}

}  // namespace fiar
