#include "toolkit/clsZantorFile.h"

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
  Append(Toolkit& toolkit, TextView fileName) : toolkit_(toolkit), path_(fileName) {}

  void open() {
    attempt([this] {
      file_ = openToAppend(path_);
      return file_ != nullptr;
    });
  }

  void goToEnd() {
    attempt([this] { return file_ != nullptr && std::fseek(file_.get(), 0, SEEK_END) == 0; });
  }

  void write(const std::string& bytes) {
    attempt([this, &bytes] {
      return file_ != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) == bytes.size() &&
             std::fflush(file_.get()) == 0;
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
      file_.reset();
    }
  }

  Toolkit& toolkit_;
  TextView path_;
  OpenFile file_;
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
