#pragma once

#include "platform/sound_player.h"

namespace fiar::win32 {

/// Plays through the system's own player of short sounds.
class Win32SoundPlayer final : public SoundPlayer {
public:
  void stop() override;
  void play(const std::string& waveImage) override;
};

}  // namespace fiar::win32
