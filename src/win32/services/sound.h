#pragma once

#include "platform/platform.h"

namespace fiar::win32 {

/// Plays through the system's own player of short sounds; silent from its destruction on.
class Win32SoundPlayer final : public SoundPlayer {
public:
  Win32SoundPlayer() = default;
  Win32SoundPlayer(const Win32SoundPlayer&) = delete;
  Win32SoundPlayer& operator=(const Win32SoundPlayer&) = delete;
  Win32SoundPlayer(Win32SoundPlayer&&) = delete;
  Win32SoundPlayer& operator=(Win32SoundPlayer&&) = delete;
  ~Win32SoundPlayer() override;

  void stop() override;
  void play(const std::string& waveImage) override;

private:
  // What the system may be reading in the background.
  std::string playing_;
};

}  // namespace fiar::win32
