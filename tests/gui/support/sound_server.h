#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "gui/support/child_process.h"
#include "support/temporary_folder.h"

namespace fiar::gui {

/// A sound server of the tests' own. Nobody hears what it plays, but it can be recorded. Programs that are
/// started while it is there play to it.
class SoundServer {
public:
  /// Null where none is installed.
  static std::unique_ptr<SoundServer> start();

private:
  SoundServer();

  test::TemporaryFolder folder_;
  std::unique_ptr<ChildProcess> server_;
};

/// What a sound server plays from the moment when the object is made.
class SoundRecording {
public:
  /// Waits until the recording runs.
  SoundRecording();

  /// The lengths in milliseconds of the sounds so far, a silence after each; a sound that may not have ended
  /// yet is left out.
  std::vector<int> sounds() const;

private:
  test::TemporaryFolder folder_;
  std::filesystem::path samples_ = folder_.path() / "samples";
  ChildProcess recorder_;
};

}  // namespace fiar::gui
