// Sends what a file of settings describes, with the machine's own sockets, and prints what that took.
//
// The file holds "name=value" entries, each ended by a NUL: the properties of a message, and
//   folder   where the debug log goes, with "\" at its end
//   times    how often to send the message (1)
//   speed    how much faster than the real one the program's clock runs (1)

#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "mail/client_machine.h"
#include "platform/mersenne_twister.h"
#include "support/allocation_count.h"
#include "support/fake_platform.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"

namespace fiar::test {
namespace {

using Settings = std::map<std::string, std::string>;

Settings readSettings(const char* path) {
  Settings settings{{"times", "1"}, {"speed", "1"}};
  std::ifstream file(path, std::ios::binary);
  for (std::string entry; std::getline(file, entry, '\0');) {
    const std::size_t equals = entry.find('=');
    settings[entry.substr(0, equals)] = entry.substr(equals + 1);
  }
  return settings;
}

/// This machine's time and events, with seconds that pass faster.
class FastTime final : public Clock, public PendingEvents {
public:
  explicit FastTime(double speed) : speed_(speed) {}

  int waits = 0;

  double timer() const override {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    return std::fmod(passed.count() * speed_, 86400);
  }
  DateTime now() const override { return systemClock().now(); }
  void process() override { pendingEvents().process(); }
  void waitAndProcess(double seconds) override {
    ++waits;
    pendingEvents().waitAndProcess(seconds / speed_);
  }

private:
  double speed_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void setMessage(clsZantorMail& mail, const Settings& settings) {
  using Mail = clsZantorMail;
  const std::map<std::string, void (Mail::*)(TextView)> properties{
      {"serverName", &Mail::setServerName},   {"ServerPort", &Mail::setServerPort},
      {"UserName", &Mail::setUserName},       {"Password", &Mail::setPassword},
      {"MailFrom", &Mail::setMailFrom},       {"MailTo", &Mail::setMailTo},
      {"MailBcc", &Mail::setMailBcc},         {"ReplyTo", &Mail::setReplyTo},
      {"subject", &Mail::setSubject},         {"Message", &Mail::setMessage},
      {"Attachments", &Mail::setAttachments}, {"debugScript", &Mail::setDebugScript}};
  for (const auto& [name, value] : settings) {
    const auto property = properties.find(name);
    if (property != properties.end()) (mail.*property->second)(fromUtf8(value));
  }
}

void send(const Settings& settings) {
  constexpr int kWarmUp = 20;
  FakePlatform fake;
  MersenneTwister random;
  FastTime time(std::stod(settings.at("speed")));
  const Platform platform{time,   CodePage::system(), fake.regional, fake.environment, fake.resources,
                          random, fake.sound,         time,          fake.database,    newSocket};
  Toolkit toolkit(platform);
  toolkit.values().applicationFolder = fromUtf8(settings.at("folder"));
  setMessage(toolkit.mail(), settings);

  const int times = std::stoi(settings.at("times"));
  const auto print = [] {
    const auto [handles, memory] = holdings();
    std::printf("handles %zu\nobjects %zu\nmemory %zu\n", handles, liveAllocationCount(), memory);
  };
  for (int i = 0; i < times; ++i) {
    if (i == kWarmUp || i == (kWarmUp + times) / 2) print();
    if (toolkit.mail().SendMail()) std::puts("true");
  }
  print();
  std::printf("waits %d\n", time.waits);
}

}  // namespace
}  // namespace fiar::test

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: send_mail SETTINGS\n", stderr);
    return 2;
  }
  fiar::test::send(fiar::test::readSettings(argv[1]));
  return 0;
}
