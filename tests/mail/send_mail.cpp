// Sends a message with the machine's own sockets, and prints what the process holds then and how often it
// waited.
//
//   send_mail HOST PORT FOLDER SPEED TIMES ATTACHMENTS
//
//   FOLDER  where the debug log goes, with a separator at its end
//   SPEED   how much faster than the real one the program's clock runs
//   TIMES   how often to send the message; one that is sent once is logged

#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>

#include "mail/client_machine.h"
#include "support/allocation_count.h"
#include "support/fake_platform.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"

namespace fiar::test {
namespace {

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
  void process() override { clientMachine().events.process(); }
  void waitAndProcess(double seconds) override {
    ++waits;
    clientMachine().events.waitAndProcess(seconds / speed_);
  }

private:
  double speed_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void send(const char* const* arguments) {
  constexpr int kWarmUp = 20;
  const int times = std::stoi(arguments[5]);
  FakePlatform fake;
  MersenneTwister random;
  FastTime time(std::stod(arguments[4]));
  const Platform platform{
      time,   CodePage::system(), fake.regional, fake.environment, fake.resources,
      random, fake.sound,         time,          fake.database,    &clientMachine().sockets};
  Toolkit toolkit(platform);
  toolkit.values().applicationFolder = fromUtf8(arguments[3]);
  clsZantorMail& mail = toolkit.mail();
  mail.setDebugScript(times == 1 ? u"on" : u"off");
  mail.setServerName(fromUtf8(arguments[1]));
  mail.setServerPort(fromUtf8(arguments[2]));
  mail.setMailFrom(u"me@example.org");
  mail.setMailTo(u"you@example.org;her@example.org");
  mail.setMailBcc(u"one@example.net;two@example.net");
  mail.setReplyTo(u"re@example.org");
  mail.setSubject(u"Caf\u00E9 \u20AC");
  mail.setMessage(u"<b>one</b>\r\ntwo");
  mail.setAttachments(fromUtf8(arguments[6]));

  const auto print = [] {
    const auto [handles, memory] = holdings();
    std::printf("handles %zu\nobjects %zu\nmemory %zu\n", handles, liveAllocationCount(), memory);
  };
  for (int i = 0; i < times; ++i) {
    if (i == kWarmUp) print();
    if (mail.SendMail()) std::puts("true");
  }
  print();
  std::printf("waits %d\n", time.waits);
}

}  // namespace
}  // namespace fiar::test

int main(int /*argc*/, char** argv) {
  fiar::test::send(argv);
}
