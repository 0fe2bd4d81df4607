#include "platform/win32/win32_sound.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/file_resources.h"

namespace fiar::win32 {
namespace {

// With or without a sound device: each cue is cut off by the next, so twenty of a quarter of a second, which
// the system's slow first one does not count among, take far less than five seconds.
TEST(Win32Sound, ReturnsAtOnceAndNeedsNeitherADeviceNorTheImage) {
  const FileResources resources(FIAR_RESOURCE_DIR);
  const std::string error = resources.custom(u"WAVERR").value();
  const std::string tap = resources.custom(u"WAVTAP").value();
  Win32SoundPlayer().play(tap);
  const auto start = std::chrono::steady_clock::now();
  {
    Win32SoundPlayer player;
    player.stop();
    for (int i = 0; i < 20; ++i) {
      player.play(std::string(error));
      player.play(std::string(tap));
      player.play("RIFF");
      player.play(error.substr(0, 100));
      player.play("");
    }
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4500));
}

}  // namespace
}  // namespace fiar::win32
