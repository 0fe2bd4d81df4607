#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>

#include "support/fake_platform.h"
#include "support/fake_socket.h"
#include "support/temporary_folder.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/file_content.h"
#include "toolkit/mail_text.h"
#include "toolkit/toolkit.h"

namespace fiar::test {
namespace {

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

/// A mail client with a message to send, the server that it talks to, and an empty application folder.
class MailTest : public testing::Test, private SocketFactory {
public:
  FakePlatform fake;
  FakeServer server;
  FakeSocket* socket = nullptr;
  TemporaryFolder folder;
  std::unique_ptr<Toolkit> toolkit;
  clsZantorMail* mail = nullptr;

  void SetUp() override {
    fake.platform.sockets = this;
    fake.events.onEvents = [this] { socket->deliver(); };
    toolkit = std::make_unique<Toolkit>(fake.platform);
    toolkit->values().applicationFolder = folder.text();
    mail = &toolkit->mail();
    mail->setServerName(u"mail.example");
    mail->setServerPort(u"2525");
    mail->setMailFrom(u"me@example");
    mail->setMailTo(u"you@example");
    mail->setSubject(u"Hello");
    mail->setMessage(u"one\r\ntwo");
  }

  Text pathTo(TextView name) const { return folder.text().append(name); }
  void write(const char* name, const std::string& bytes) const {
    std::ofstream(folder.path() / name, std::ios::binary) << bytes;
  }
  /// The debug log with LF line ends.
  std::string debugLog() const {
    return std::regex_replace(fileContent(pathTo(u"rmail.debug.log")), std::regex("\r\n"), "\n");
  }
  void removeDebugLog() const { std::filesystem::remove(folder.path() / "rmail.debug.log"); }
  /// The codes that were waited for in vain, by the debug log.
  std::string timeouts() const {
    std::string codes;
    const std::string log = debugLog();
    const std::regex entry("waitForAnswer:(...) TIMEOUT\n");
    for (std::sregex_iterator found(log.begin(), log.end(), entry), end; found != end; ++found) {
      codes += (*found)[1].str() + " ";
    }
    return codes;
  }
  void sendOnce() const {
    EXPECT_FALSE(mail->SendMail());
    EXPECT_EQ(socket->State(), SocketState::Closed);
  }

private:
  std::unique_ptr<SocketControl> newSocket() override {
    auto made = std::make_unique<FakeSocket>(server, fake.events);
    socket = made.get();
    return made;
  }
};

TEST_F(MailTest, SaysExactlyTheseLines) {
  write("one byte.bin", "\xFF");
  write("lines", std::string(60, 'A'));
  const std::string start = "HELO mail.example\n";
  const std::string end = "one<br>\ntwo\n.\nQUIT\n";
  const std::string plain =
      "MAIL FROM:me@example\nRCPT TO:you@example\nDATA\nContent-Type: text/html; Charset = utf-8\n"
      "Subject:Hello\nFrom:me@example\nTo:you@example\nBcc:\n\n" +
      end;
  const std::string part =
      "\n--BOUNDARY\nContent-Transfer-Encoding: base64\nContent-Type: application/octet-stream\n"
      "Content-Disposition: attachment; filename=";
  using Mail = clsZantorMail;
  const struct {
    const char* name;
    std::vector<std::pair<void (Mail::*)(TextView), Text>> changes;
    std::string expected;
  } cases[] = {
      {"plain", {}, start + plain},
      {"with a login",
       {{&Mail::setUserName, u"caf\u00E9"}, {&Mail::setPassword, u"secret"}},
       start + "AUTH LOGIN\nY2Fm6Q==\nc2VjcmV0\n" + plain},
      {"without a password", {{&Mail::setPassword, {}}}, start + plain},
      {"without a name", {{&Mail::setUserName, {}}, {&Mail::setPassword, u"secret"}}, start + plain},
      {"recipients, blind copies and an empty entry",
       {{&Mail::setMailTo, u"a@x; b@x;"}, {&Mail::setMailBcc, u"c@x;d@x"}, {&Mail::setReplyTo, u"r@x"}},
       start +
           "MAIL FROM:me@example\nRCPT TO:a@x\nRCPT TO: b@x\nRCPT TO:\nRCPT TO:c@x\nRCPT TO:d@x\nDATA\n"
           "Content-Type: text/html; Charset = utf-8\nSubject:Hello\nFrom:me@example\nTo:a@x; b@x;\n"
           "Reply-To:r@x\nBcc:<c@x>;<d@x>;\n\n" +
           end},
      {"no recipient, no text",
       {{&Mail::setMailTo, {}}, {&Mail::setMailBcc, {}}, {&Mail::setReplyTo, {}}, {&Mail::setMessage, {}}},
       start + "MAIL FROM:me@example\nDATA\nContent-Type: text/html; Charset = utf-8\nSubject:Hello\n"
               "From:me@example\nTo:\nBcc:\n\n\n.\nQUIT\n"},
      {"attachments",
       {{&Mail::setMailTo, u"you@example"},
        {&Mail::setMessage, u"\r\n\u20AC and \u4E00\r\n"},
        {&Mail::setAttachments, pathTo(u"one byte.bin") + u";" + pathTo(u"none") + u";" + pathTo(u"lines")}},
       start +
           "MAIL FROM:me@example\nRCPT TO:you@example\nDATA\nSubject:Hello\nFrom:me@example\n"
           "To:you@example\nBcc:\nContent-Type: multipart/mixed; boundary=\"BOUNDARY\"\n\n--BOUNDARY\n"
           "Content-Type: text/html; charset=\"UTF-8\"\nContent-Transfer-Encoding: quoted-printable\n\n"
           "<br>\n\x80 and ?<br>\n\n" +
           part + "\"one byte.bin\"\n\n/w==\n" + part + "\"none\"\n\n\n" + part +
           "\"lines\"\n\n"
           "QUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFB\nQUFB\n"
           "--BOUNDARY--\n.\nQUIT\n"}};
  server.answers["Y2Fm6Q=="] = {"334 UGFzc3dvcmQ6\r\n"};
  server.answers["c2VjcmV0"] = {"235 welcome\r\n"};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    server.lines.clear();
    for (const auto& [set, value] : row.changes) std::invoke(set, *mail, value);
    sendOnce();
    const std::regex boundary("(--|\")([A-Za-z0-9]{30})(?=--|\"|\n)");
    EXPECT_EQ(std::regex_replace(joined(server.lines), boundary, "$1BOUNDARY"), row.expected);
  }
  EXPECT_EQ(server.connections, static_cast<int>(std::size(cases)));
  EXPECT_EQ(socket->RemoteHost, u"mail.example");
  EXPECT_EQ(socket->RemotePort, 2525);
}

TEST_F(MailTest, WaitsForEachAnswerAsLongAsItMay) {
  server.answers = {{"", {""}}};  // connected, then silence
  mail->setMailBcc(u"c@x");
  mail->setUserName(u"me");
  mail->setPassword(u"secret");
  sendOnce();
  // The empty answer that stands for the connection costs no time, but a second look at the greeting's wait.
  fake.events.waits.erase(fake.events.waits.begin());
  EXPECT_EQ(fake.events.waits, (std::vector<double>{20, 20, 10, 10, 10, 10, 10, 10, 10, 60, 10}));
  EXPECT_EQ(server.lines.back(), "QUIT");
}

TEST_F(MailTest, GoesOnWhateverTheServerDoes) {
  const std::string end = FakeServer::kEnd;
  const std::string garbage(1 << 20, 'x');
  const struct {
    const char* name;
    std::string word;
    std::vector<std::string> answer;
    std::string timeouts;
    double seconds;
    std::size_t linesSent;
  } cases[] = {{"continuation lines", "HELO", {"250-a\r\n250-b\r\n250 c\r\n"}, "", 0, 14},
               {"only continuation lines", "HELO", {"250-a\r\n250-b\r\n"}, "250 ", 20, 14},
               {"pieces of whole lines", "HELO", {"250-a", "\r\n", "250 c"}, "", 0, 14},
               {"a code in pieces", "HELO", {"2", "5", "0", " ", "c\r\n"}, "250 ", 20, 14},
               {"a code without a space", "HELO", {"250\r\n"}, "250 ", 20, 14},
               {"a space first", "HELO", {" 250 c\r\n"}, "250 ", 20, 14},
               {"a longer code", "HELO", {"2500 c\r\n250. c\r\n"}, "250 ", 20, 14},
               {"only LF", "HELO", {"200 a\n250 c\n"}, "250 ", 20, 14},
               {"another code", "DATA", {"550 no\r\n"}, "354 ", 10, 14},
               {"garbage before", "HELO", {garbage, "\r\n250 c\r\n"}, "", 0, 14},
               {"only garbage", ".", {garbage + std::string(1000, '\0') + "\r"}, "250 ", 60, 14},
               {"a refusal", "", {FakeServer::kFailure}, "220 ", 20, 0},
               {"an end instead of a greeting", "", {end}, "220 ", 20, 0},
               {"an end after the greeting", "", {"220 a\r\n", end}, "250 250 250 354 250 221 ", 120, 1},
               {"an end in the message", "DATA", {"354 go\r\n", end}, "250 221 ", 70, 13}};
  mail->setDebugScript(u"1");
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    removeDebugLog();
    server.lines.clear();
    const FakeServer good = server;
    server.answers[row.word] = row.answer;
    const double before = fake.clock.seconds;
    sendOnce();
    EXPECT_EQ(timeouts(), row.timeouts);
    EXPECT_EQ(fake.clock.seconds - before, row.seconds);
    EXPECT_EQ(server.lines.size(), row.linesSent);
    server.answers = good.answers;
  }
}

TEST_F(MailTest, WritesTheDebugLog) {
  mail->setDebugScript(u"on");
  mail->setUserName(u"me");
  mail->setPassword(u"");
  mail->setMailTo(u"a@x;b@x");
  mail->setMailBcc(u"");
  mail->setMailFrom(u"me@x");
  mail->setReplyTo(u"r@x");
  mail->setSubject(u"S");
  mail->setMessage(u"B");
  mail->setServerName(u"h");
  mail->setServerPort(u"25");
  mail->setAttachments(u"");
  server.answers["RCPT"] = {FakeServer::kFailure};
  sendOnce();
  // A line that is sent brings its own line end along.
  const std::string expected =
      "username set:me\npwd set:\nmail_To set:a@x;b@x\nMail_Bcc set:\nmail_from set:me@x\n"
      "mail_RepylTo set:r@x\nmail_Subject set:S\nmail_Message set:B\nmail_ServerName set:h\n"
      "mail_Port  set:25\nConnected\nwaitForAnswer:220 OK\nwinsock.send:HELO h\n\nwaitForAnswer:250 OK\n"
      "winsock.send:MAIL FROM:me@x\n\nwaitForAnswer:250 OK\nwinsock.send:RCPT TO:a@x\n\n"
      "winsock.error:connection refused\nwaitForAnswer:250 TIMEOUT\nwinsock.send:RCPT TO:b@x\n\n";
  EXPECT_EQ(debugLog().substr(0, expected.size()), expected);

  mail->setDebugScript(u"0");
  removeDebugLog();
  mail->setSubject(u"T");
  sendOnce();
  EXPECT_EQ(debugLog(), "");
}

TEST_F(MailTest, MidnightEndsAWait) {
  // The greeting never comes, but every tenth second something else does.
  server.answers[""] = {""};
  mail->setDebugScript(u"1");
  fake.events.onEvents = [this] {
    socket->deliver();
    fake.events.longestWait = 10;
  };
  fake.clock.seconds = 86395;
  fake.events.waits.clear();
  server.answers["HELO"] = {FakeServer::kEnd};
  sendOnce();
  EXPECT_EQ(fake.events.waits.at(1), 20);
  EXPECT_EQ(fake.events.waits.at(2), 20) << "the wait for the greeting ends at midnight, halfway";
  EXPECT_TRUE(timeouts().starts_with("220 250 "));
}

TEST_F(MailTest, SendsOneMessageAtATime) {
  bool asked = false;
  fake.events.onEvents = [this, &asked] {
    socket->deliver();
    if (std::exchange(asked, true)) return;
    EXPECT_FALSE(mail->SendMail());
  };
  sendOnce();
  EXPECT_EQ(server.connections, 1);
  EXPECT_EQ(server.lines.size(), 14U);
  sendOnce();
  EXPECT_EQ(server.connections, 2);
  EXPECT_EQ(server.lines.size(), 28U);
}

TEST_F(MailTest, TakesOnlyDigitsAsAPort) {
  const std::pair<TextView, int> cases[] = {
      {u"25", 25}, {u" 587 ", 587}, {u"65535", 65535}, {u"65536", 0},
      {u"", 0},    {u"-1", 0},      {u"smtp", 0},      {u"99999999999999999999", 0}};
  for (const auto& [text, port] : cases) {
    mail->setServerPort(text);
    EXPECT_EQ(socket->RemotePort, port) << toUtf8(text);
    EXPECT_EQ(mail->ServerPort(), text);
  }
}

TEST(MailText, UniqueTextsDifferByChanceAndByTime) {
  FakePlatform fake;
  const Text first = uniqueText(fake.platform, 30);
  EXPECT_EQ(first.size(), 30U);
  fake.clock.advance(0.001);
  const Text later = uniqueText(fake.platform, 30);
  EXPECT_NE(later, first);
  fake.random.afterwards = 1 - 0x1p-53;
  EXPECT_NE(uniqueText(fake.platform, 30), later);
}

}  // namespace
}  // namespace fiar::test
