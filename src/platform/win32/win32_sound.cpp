#include "platform/win32/win32_sound.h"

#include <windows.h>
// After <windows.h>, whose types it uses.
#include <mmsystem.h>

#include "platform/wave_image.h"

namespace fiar::win32 {

// The results are ignored: without a sound device the game is silent.

Win32SoundPlayer::~Win32SoundPlayer() {
  sndPlaySoundA(nullptr, 0);
}

void Win32SoundPlayer::stop() {
  sndPlaySoundA(nullptr, 0);
}

void Win32SoundPlayer::play(const std::string& waveImage) {
  stop();
  // The system would read beyond a damaged image, or play its default sound instead.
  if (!isPlayableWave(waveImage)) return;
  playing_ = waveImage;
  sndPlaySoundA(playing_.data(), SND_ASYNC | SND_MEMORY);
}

}  // namespace fiar::win32
