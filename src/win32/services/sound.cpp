#include "win32/services/services.h"

// After <windows.h>, whose types it uses.
#include <mmsystem.h>

#include "platform/wave_image.h"

namespace fiar::win32 {
namespace {

// The system's player, loaded once, from the system folder alone: Windows would look for this library beside
// the program first if the program imported it. Plays nothing where it is missing.
void playSound(const char* image, UINT flags) {
  static const auto systemPlayer = [] {
    const HMODULE library = LoadLibraryExW(L"winmm.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    const FARPROC found = library == nullptr ? nullptr : GetProcAddress(library, "sndPlaySoundA");
    return reinterpret_cast<decltype(&sndPlaySoundA)>(reinterpret_cast<void*>(found));
  }();
  if (systemPlayer != nullptr) systemPlayer(image, flags);
}

}  // namespace

// The results are ignored: without a sound device the game is silent.

Win32SoundPlayer::~Win32SoundPlayer() {
  if (!playing_.empty()) Win32SoundPlayer::stop();
}

void Win32SoundPlayer::stop() {
  playSound(nullptr, 0);
}

void Win32SoundPlayer::play(const std::string& waveImage) {
  // The system would read beyond a damaged image, or play its default sound instead.
  if (!isPlayableWave(waveImage)) return;
  std::vector<char> next(waveImage.begin(), waveImage.end());
  playSound(next.data(), SND_ASYNC | SND_MEMORY);
  // Only now has the system finished with the previous image.
  playing_.swap(next);
}

}  // namespace fiar::win32
