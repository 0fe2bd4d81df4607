#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "support/fake_socket.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

/// A mail client with a message to send, which writes its log to a folder of its own.
struct Mail : testing::Test {
  test::FakePlatform machine;
  test::FakeNetwork network{machine};
  test::TemporaryFolder folder;
  Toolkit toolkit{machine.platform};
  clsZantorMail& mail = toolkit.mail();
  test::FakeSocket& socket = *network.socket;

  Mail() {
    toolkit.values().applicationFolder = folder.text();
    mail.debugScript = u"on";
    mail.serverName = u"mail.example";
    mail.ServerPort = u"2525";
    mail.MailFrom = u"me@example";
    mail.MailTo = u"you@example";
    mail.subject = u"Hello";
    mail.Message = u"one\r\ntwo";
  }
  /// Returns the seconds that it took.
  double send() {
    socket.said.clear();
    const double before = machine.clock.seconds;
    EXPECT_FALSE(mail.SendMail());
    EXPECT_EQ(socket.State(), SocketState::Closed);
    return machine.clock.seconds - before;
  }
  /// What the client says, with a name for the boundary and LF as line end.
  std::string said() {
    send();
    const auto named = std::regex_replace(socket.said, std::regex("(--|\")[A-Za-z0-9]{30}"), "$1BOUNDARY");
    return std::regex_replace(named, std::regex("\r\n"), "\n");
  }
};

TEST_F(Mail, SaysExactlyTheseLines) {
  const std::string start = "HELO mail.example\n";
  const std::string html = "DATA\nContent-Type: text/html; Charset = utf-8\n";
  const std::string from = "Subject:Hello\nFrom:me@example\n";
  const std::string end = "\n.\nQUIT\n";
  mail.UserName = u"without a password";
  EXPECT_EQ(said(), start + "MAIL FROM:me@example\nRCPT TO:you@example\n" + html + from +
                        "To:you@example\nBcc:\n\none<br>\ntwo" + end);

  mail.UserName = u"caf\u00E9";
  mail.Password = u"secret";
  mail.MailTo = u"a@x; b@x;";
  mail.MailBcc = u"c@x;d@x";
  mail.ReplyTo = u"r@x";
  EXPECT_EQ(said(), start + "AUTH LOGIN\nY2Fm6Q==\nc2VjcmV0\nMAIL FROM:me@example\nRCPT TO:a@x\n" +
                        "RCPT TO: b@x\nRCPT TO:\nRCPT TO:c@x\nRCPT TO:d@x\n" + html + from +
                        "To:a@x; b@x;\nReply-To:r@x\nBcc:<c@x>;<d@x>;\n\none<br>\ntwo" + end);

  std::ofstream(folder.path / "two lines") << std::string(57, '\0') << "BC";
  for (auto* property : {&mail.UserName, &mail.MailTo, &mail.MailBcc, &mail.ReplyTo}) *property = u"";
  mail.Message = u"\r\n\u20AC and \u4E00\r\n";
  mail.Attachments = u"none;" + folder.text() + u"two lines";
  const std::string part =
      "\n--BOUNDARY\nContent-Transfer-Encoding: base64\nContent-Type: application/octet-stream\n"
      "Content-Disposition: attachment; filename=";
  EXPECT_EQ(said(),
            start + "MAIL FROM:me@example\nDATA\n" + from +
                "To:\nBcc:\nContent-Type: multipart/mixed; boundary=\"BOUNDARY\"\n\n--BOUNDARY\n"
                "Content-Type: text/html; charset=\"UTF-8\"\nContent-Transfer-Encoding: quoted-printable\n"
                "\n<br>\n\x80 and ?<br>\n\n" +
                part + "\"none\"\n\n\n" + part + "\"two lines\"\n\n" + std::string(76, 'A') +
                "\nQkM=\n--BOUNDARY--" + end);
}

TEST_F(Mail, WaitsForEachAnswerAsLongAsItMayAndSendsNothingElseMeanwhile) {
  // Every answer comes just too late, and would do for the next command, too.
  socket.delay = 86400;
  for (auto& [command, answer] : socket.answers) answer = "220 a\r\n250 a\r\n334 a\r\n354 a\r\n221 a\r\n";
  machine.events.onEvents = [this] {
    socket.deliver();
    EXPECT_FALSE(mail.SendMail());
  };
  mail.MailBcc = u"c@x";
  mail.UserName = u"me";
  mail.Password = u"secret";
  // Midnight ends the wait for the greeting.
  machine.clock.seconds = 86395;
  send();
  EXPECT_EQ(machine.events.waits, (std::vector<double>{5, 20, 10, 10, 10, 10, 10, 10, 10, 60, 10}));
  EXPECT_EQ(send(), 180);
}

TEST_F(Mail, GoesOnWhateverTheServerDoes) {
  const std::string failure(1, test::FakeSocket::kFailure);
  const struct {
    std::string command;
    std::string answer;
    double seconds;
  } cases[] = {{"HELO", "250-a\r\n250-b\r\n250 c\r\n", 0},
               {"HELO", "250-a|\r\n|250 c", 0},
               {"HELO", "2|5|0| |c\r\n", 20},
               {"HELO", " 250 c\r\n", 20},
               {"HELO", "2500 c\r\n250. c\r\n", 20},
               {"HELO", "200 a\n250 c\n", 20},
               {"HELO", std::string(1 << 16, 'x') + "|\r\n250 c\r\n", 0},
               {"connection", failure, 20},
               {"connection", "220 a\r\n|" + failure, 120}};
  const auto good = socket.answers;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.command + ": " + row.answer.substr(0, 50));
    socket.answers = good;
    socket.answers[row.command] = row.answer;
    EXPECT_EQ(send(), row.seconds);
    // Who was never greeted says nothing.
    EXPECT_EQ(socket.said.ends_with("\r\nQUIT\r\n"), row.answer != failure);
  }
}

TEST_F(Mail, WritesTheDebugLog) {
  for (auto* property : {&mail.UserName, &mail.Password, &mail.MailBcc, &mail.ReplyTo}) *property = u"x";
  socket.answers["AUTH"] = test::FakeSocket::kFailure;
  send();
  // A line that is sent brings its own line end along.
  const std::string expected =
      "mail_ServerName set:mail.example\r\nmail_Port  set:2525\r\nmail_from set:me@example\r\n"
      "mail_To set:you@example\r\nmail_Subject set:Hello\r\nmail_Message set:one\r\ntwo\r\n"
      "username set:x\r\npwd set:x\r\nMail_Bcc set:x\r\nmail_RepylTo set:x\r\n"
      "Connected\r\nwaitForAnswer:220 OK\r\nwinsock.send:HELO mail.example\r\n\r\nwaitForAnswer:250 OK\r\n"
      "winsock.send:AUTH LOGIN\r\n\r\nwinsock.error:connection refused\r\nwaitForAnswer:334 TIMEOUT\r\n";
  const std::string log = folder.contents(u"rmail.debug.log");
  EXPECT_EQ(log.substr(0, expected.size()), expected);
  mail.debugScript = u"0";
  mail.ServerPort = u"65536";
  EXPECT_EQ(socket.RemotePort, 0);
  send();
  EXPECT_EQ(folder.contents(u"rmail.debug.log"), log);
}

}  // namespace
}  // namespace fiar
