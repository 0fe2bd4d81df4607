#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "support/allocation_count.h"
#include "support/fake_socket.h"
#include "support/temporary_folder.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

/// A mail client with a message to send, and an empty application folder.
struct Mail : testing::Test {
  test::FakePlatform machine;
  test::FakeNetwork network{machine};
  test::TemporaryFolder folder;
  Toolkit toolkit{machine.platform};
  clsZantorMail& mail = toolkit.mail();
  test::FakeSocket& socket = *network.socket;

  Mail() {
    toolkit.values().applicationFolder = folder.text();
    setMessage();
  }
  void setMessage() {
    mail.serverName = u"mail.example";
    mail.ServerPort = u"2525";
    mail.MailFrom = u"me@example";
    mail.MailTo = u"you@example";
    mail.subject = u"Hello";
    mail.Message = u"one\r\ntwo";
  }
  /// Returns the seconds that it took.
  double send() {
    socket.lines.clear();
    const double before = machine.clock.seconds;
    EXPECT_FALSE(mail.SendMail());
    EXPECT_EQ(socket.State(), SocketState::Closed);
    return machine.clock.seconds - before;
  }
  /// The lines of a send that takes no time, with a name for the boundary.
  std::string said() {
    EXPECT_EQ(send(), 0);
    std::string text;
    for (const std::string& line : socket.lines) text += line + "\n";
    return std::regex_replace(text, std::regex("(--|\")([A-Za-z0-9]{30})(?=--|\"|\n)"), "$1BOUNDARY");
  }
};

TEST_F(Mail, SaysExactlyTheseLines) {
  const std::string start = "HELO mail.example\n";
  const std::string end = "one<br>\ntwo\n.\nQUIT\n";
  const std::string envelope = "MAIL FROM:me@example\nRCPT TO:you@example\nDATA\n";
  const std::string html = "Content-Type: text/html; Charset = utf-8\n";
  const std::string from = "Subject:Hello\nFrom:me@example\n";
  const std::string plain = envelope + html + from + "To:you@example\nBcc:\n\n" + end;
  EXPECT_EQ(said(), start + plain);

  socket.answers["Y2Fm6Q=="] = {"334 UGFzc3dvcmQ6\r\n"};
  socket.answers["c2VjcmV0"] = {"235 welcome\r\n"};
  mail.Password = u"secret";
  EXPECT_EQ(said(), start + plain);
  mail.UserName = u"caf\u00E9";
  EXPECT_EQ(said(), start + "AUTH LOGIN\nY2Fm6Q==\nc2VjcmV0\n" + plain);
  mail.Password = u"";
  EXPECT_EQ(said(), start + plain);

  mail.MailTo = u"a@x; b@x;";
  mail.MailBcc = u"c@x;d@x";
  mail.ReplyTo = u"r@x";
  const std::string recipients = "RCPT TO:a@x\nRCPT TO: b@x\nRCPT TO:\nRCPT TO:c@x\nRCPT TO:d@x\n";
  EXPECT_EQ(said(), start + "MAIL FROM:me@example\n" + recipients + "DATA\n" + html + from +
                        "To:a@x; b@x;\nReply-To:r@x\nBcc:<c@x>;<d@x>;\n\n" + end);

  const std::string fullLine = "QUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFB";
  std::ofstream(folder.path() / "one byte.bin") << '\xFF';
  std::ofstream(folder.path() / "lines") << std::string(60, 'A');
  std::filesystem::create_directory(folder.path() / "folder");
  mail.MailTo = u"";
  mail.MailBcc = u"";
  mail.ReplyTo = u"";
  mail.Message = u"\r\n\u20AC and \u4E00\r\n";
  const Text path = folder.text();
  mail.Attachments = path + u"one byte.bin;none;" + path + u"folder;" + path + u"lines";
  const std::string part =
      "\n--BOUNDARY\nContent-Transfer-Encoding: base64\nContent-Type: application/octet-stream\n"
      "Content-Disposition: attachment; filename=";
  const std::string header =
      "To:\nBcc:\nContent-Type: multipart/mixed; boundary=\"BOUNDARY\"\n\n--BOUNDARY\n"
      "Content-Type: text/html; charset=\"UTF-8\"\nContent-Transfer-Encoding: quoted-printable\n\n";
  EXPECT_EQ(said(), start + "MAIL FROM:me@example\nDATA\n" + from + header + "<br>\n\x80 and ?<br>\n\n" +
                        part + "\"one byte.bin\"\n\n/w==\n" + part + "\"none\"\n\n\n" + part +
                        "\"folder\"\n\n\n" + part + "\"lines\"\n\n" + fullLine +
                        "\nQUFB\n--BOUNDARY--\n.\nQUIT\n");
  EXPECT_EQ(socket.RemoteHost, u"mail.example");
}

TEST_F(Mail, WaitsForEachAnswerAsLongAsItMayAndSendsNothingElseMeanwhile) {
  socket.answers = {{"", {""}}};  // connected, but every answer comes just too late
  socket.late = "220 a\r\n250 a\r\n334 a\r\n235 a\r\n354 a\r\n221 a\r\n";
  machine.events.onEvents = [this] {
    socket.deliver();
    EXPECT_FALSE(mail.SendMail());
  };
  mail.MailBcc = u"c@x";
  mail.UserName = u"me";
  mail.Password = u"secret";
  // The connection costs no time, but a second look at the greeting's wait, which midnight ends.
  machine.clock.seconds = 86395;
  send();
  EXPECT_EQ(machine.events.waits, (std::vector<double>{5, 5, 20, 10, 10, 10, 10, 10, 10, 10, 60, 10}));
  EXPECT_EQ(send(), 180);
}

TEST_F(Mail, GoesOnWhateverTheServerDoes) {
  const std::string end = test::FakeSocket::kEnd;
  const std::string garbage(1 << 16, 'x');
  const struct {
    const char* name;
    std::string word;
    std::vector<std::string> answer;
    double seconds;
    std::size_t lines = 14;
  } cases[] = {{"continuation lines", "HELO", {"250-a\r\n250-b\r\n250 c\r\n"}, 0},
               {"only continuation lines", "HELO", {"250-a\r\n250-b\r\n"}, 20},
               {"pieces of whole lines", "HELO", {"250-a", "\r\n", "250 c"}, 0},
               {"a code in pieces", "HELO", {"2", "5", "0", " ", "c\r\n"}, 20},
               {"a code without a space", "HELO", {"250\r\n"}, 20},
               {"a space first", "HELO", {" 250 c\r\n"}, 20},
               {"a longer code", "HELO", {"2500 c\r\n250. c\r\n"}, 20},
               {"only LF", "HELO", {"200 a\n250 c\n"}, 20},
               {"another code", "DATA", {"550 no\r\n"}, 10},
               {"garbage before", "HELO", {garbage, "\r\n250 c\r\n"}, 0},
               {"much garbage", ".", std::vector<std::string>(64, garbage), 60},
               {"a refusal", "", {test::FakeSocket::kFailure}, 20, 0},
               {"an end instead of a greeting", "", {end}, 20, 0},
               {"an end after the greeting", "", {"220 a\r\n", end}, 120},
               {"an end in the message", "DATA", {"354 go\r\n", end}, 70}};
  const auto good = socket.answers;
  test::largestAllocation();
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    socket.answers = good;
    socket.answers[row.word] = row.answer;
    EXPECT_EQ(send(), row.seconds);
    EXPECT_EQ(socket.lines.size(), row.lines);
  }
  EXPECT_LT(test::largestAllocation(), 1U << 20U) << "what has been looked at piles up";
}

TEST_F(Mail, WritesTheDebugLog) {
  mail.debugScript = u"on";
  setMessage();
  mail.UserName = u"me";
  mail.Password = u"";
  mail.MailBcc = u"b@x";
  mail.ReplyTo = u"r@x";
  mail.Attachments = u"";
  socket.answers["RCPT"] = {test::FakeSocket::kFailure};
  send();
  // A line that is sent brings its own line end along.
  const std::string expected =
      "mail_ServerName set:mail.example\r\nmail_Port  set:2525\r\nmail_from set:me@example\r\n"
      "mail_To set:you@example\r\nmail_Subject set:Hello\r\nmail_Message set:one\r\ntwo\r\n"
      "username set:me\r\npwd set:\r\nMail_Bcc set:b@x\r\nmail_RepylTo set:r@x\r\n"
      "Connected\r\nwaitForAnswer:220 OK\r\n"
      "winsock.send:HELO mail.example\r\n\r\nwaitForAnswer:250 OK\r\n"
      "winsock.send:MAIL FROM:me@example\r\n\r\nwaitForAnswer:250 OK\r\n"
      "winsock.send:RCPT TO:you@example\r\n\r\nwinsock.error:connection refused\r\n"
      "waitForAnswer:250 TIMEOUT\r\nwinsock.send:RCPT TO:b@x\r\n\r\n";
  const std::string log = folder.contents(u"rmail.debug.log");
  EXPECT_EQ(log.substr(0, expected.size()), expected);
  EXPECT_TRUE(log.ends_with("waitForAnswer:221 TIMEOUT\r\n"));

  mail.debugScript = u"0";
  send();
  EXPECT_EQ(folder.contents(u"rmail.debug.log"), log);
}

TEST_F(Mail, TakesOnlyDigitsAsAPort) {
  for (const auto& [text, port] : {std::pair{u" 587 ", 587},
                                   {u"65535", 65535},
                                   {u"65536", 0},
                                   {u"-1", 0},
                                   {u"25a", 0},
                                   {u"99999999999999999999", 0},
                                   {u"", 0}}) {
    mail.ServerPort = text;
    EXPECT_EQ(socket.RemotePort, port) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace fiar
