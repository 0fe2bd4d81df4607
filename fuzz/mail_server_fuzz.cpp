// Sends a message to servers that answer anything at any time.
//
// Input: what happens at each delivery of events, one after the other: a byte with a number below 200 and as
// many bytes that arrive; 200 to 253 nothing; 254 the server ends the connection; 255 the connection fails.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "support/fake_socket.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"

namespace {

// The time limits of the whole dialogue with two recipients.
constexpr double kMostSeconds = 160 + 2 * 10;

std::vector<std::string> pieces(std::string_view bytes) {
  std::vector<std::string> result;
  while (!bytes.empty()) {
    const auto kind = static_cast<std::uint8_t>(bytes.front());
    bytes.remove_prefix(1);
    if (kind < 200) {
      result.emplace_back(bytes.substr(0, kind));
      bytes.remove_prefix(result.back().size());
    } else {
      using Socket = fiar::test::FakeSocket;
      result.emplace_back(kind == 255 ? Socket::kFailure : kind == 254 ? Socket::kEnd : Socket::kNothing);
    }
  }
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fiar::test::FakePlatform machine;
  const fiar::test::FakeNetwork network(machine);
  fiar::Toolkit toolkit(machine.platform);
  fiar::clsZantorMail& mail = toolkit.mail();
  network.socket->answers = {{"", pieces({reinterpret_cast<const char*>(data), size})}};
  mail.serverName = u"mail.example";
  mail.UserName = u"somebody";
  mail.Password = u"secret";
  mail.MailTo = u"one@example;two@example";
  const double begin = machine.clock.seconds;
  if (mail.SendMail() || network.socket->State() != fiar::SocketState::Closed) std::abort();
  if (machine.clock.seconds - begin > kMostSeconds) std::abort();
  return 0;
}
