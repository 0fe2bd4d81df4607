#pragma once

#include <string>

namespace fiar {

/// Plays one sound at a time in the background. Failures (no device, a bad image) are silent.
class SoundPlayer {
public:
  virtual ~SoundPlayer() = default;

  /// Silences what is playing; nothing happens when nothing is.
  virtual void stop() = 0;
  /// Starts a WAVE file image in the place of what is playing and returns at once. The image stays the
  /// caller's, who may change or free it right away.
  virtual void play(const std::string& waveImage) = 0;
};

}  // namespace fiar
