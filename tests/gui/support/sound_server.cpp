#include "gui/support/sound_server.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "gui/support/screen.h"

namespace fiar::gui {
namespace {

constexpr int kSamplesPerMillisecond = 8;
// Quieter samples are silence; so long a silence ends a sound.
constexpr int kThreshold = 64;
constexpr int kSilence = 60 * kSamplesPerMillisecond;

}  // namespace

SoundServer::SoundServer() {
  const std::string folder = folder_.path().string();
  const std::string socket = folder + "/socket";
  // For the server and for all that play to it or record.
  setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
  setenv("PULSE_RUNTIME_PATH", folder.c_str(), 1);
  setenv("PULSE_STATE_PATH", folder.c_str(), 1);
  server_ = std::make_unique<ChildProcess>(std::vector<std::string>{
      "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--log-level=error",
      "--load=module-null-sink sink_name=nowhere",
      "--load=module-native-protocol-unix auth-anonymous=1 auth-cookie-enabled=0 socket=" + socket});
  EXPECT_TRUE(eventually([&] { return std::filesystem::exists(socket); }))
      << "the sound server does not start";
}

std::unique_ptr<SoundServer> SoundServer::start() {
  const bool installed = std::system("command -v pulseaudio parec >/dev/null") == 0;
  return installed ? std::unique_ptr<SoundServer>(new SoundServer) : nullptr;
}

SoundRecording::SoundRecording()
    : recorder_({"parec", "--device=nowhere.monitor", "--format=s16le", "--channels=1", "--raw",
                 "--latency-msec=20", "--rate=" + std::to_string(1000 * kSamplesPerMillisecond),
                 samples_.string()}) {
  EXPECT_TRUE(eventually([&] { return std::filesystem::exists(samples_) && file_size(samples_) > 0; }))
      << "nothing can be recorded";
}

std::vector<int> SoundRecording::sounds() const {
  std::ifstream samples(samples_, std::ios::binary);
  std::vector<int> lengths;
  int length = 0;
  int silence = 0;
  std::int16_t sample = 0;
  while (samples.read(reinterpret_cast<char*>(&sample), sizeof(sample))) {
    const bool silent = std::abs(sample) < kThreshold;
    silence = silent ? silence + 1 : 0;
    if (length > 0 || !silent) ++length;
    if (length > 0 && silence == kSilence) {
      lengths.push_back((length - silence) / kSamplesPerMillisecond);
      length = 0;
    }
  }
  return lengths;
}

}  // namespace fiar::gui
