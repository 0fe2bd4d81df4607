#pragma once

#include <string>

namespace fiar {

/// Plays one sound at a time in the background. Failures (no device, a bad image) are silent.
class SoundPlayer {
public:
  virtual ~SoundPlayer() = default;

  /// Silences what is playing; nothing happens when nothing is.
  virtual void stop() = 0;
  /// Starts a WAVE file image and returns at once. The image belongs to the caller and must stay unchanged
  /// until it has been played or stop() was called.
  virtual void play(const std::string& waveImage) = 0;
};

}  // namespace fiar
