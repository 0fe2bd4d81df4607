// Sends a message to servers that answer anything at any time. The input is what arrives, in pieces.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "support/fake_socket.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr double kMostSeconds = 160 + 2 * 10;  // the limits of the whole dialogue with two recipients
  fiar::test::FakePlatform machine;
  const fiar::test::FakeNetwork network(machine);
  fiar::Toolkit toolkit(machine.platform);
  fiar::clsZantorMail& mail = toolkit.mail();
  network.socket->answers = {{"connection", {reinterpret_cast<const char*>(data), size}}};
  mail.UserName = u"somebody";
  mail.Password = u"secret";
  mail.MailTo = u"one@example;two@example";
  if (mail.SendMail() || network.socket->State() != fiar::SocketState::Closed) std::abort();
  if (machine.clock.seconds > fiar::test::FakeClock().seconds + kMostSeconds) std::abort();
  return 0;
}
