#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>
#include <sstream>

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
  /// The result of each wait, by the debug log, as in "220 OK, 250 TIMEOUT".
  std::string waits() const {
    std::string results;
    std::istringstream log(debugLog());
    const std::string label = "waitForAnswer:";
    for (std::string line; std::getline(log, line);) {
      if (line.starts_with(label)) results += (results.empty() ? "" : ", ") + line.substr(label.size());
    }
    return results;
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
  write("lines.bin", std::string(60, 'A'));
  const std::string start = "HELO mail.example\n";
  const std::string end = "one<br>\ntwo\n.\nQUIT\n";
  const std::string plain =
      "MAIL FROM:me@example\nRCPT TO:you@example\nDATA\nContent-Type: text/html; Charset = utf-8\n"
      "Subject:Hello\nFrom:me@example\nTo:you@example\nBcc:\n\n" +
      end;
  const struct {
    const char* name;
    std::function<void()> set;
    std::string expected;
  } cases[] = {
      {"plain", [] {}, start + plain},
      {"with a login",
       [this] {
         mail->setUserName(u"caf\u00E9");
         mail->setPassword(u"secret");
       },
       start + "AUTH LOGIN\nY2Fm6Q==\nc2VjcmV0\n" + plain},
      {"without a password", [this] { mail->setPassword({}); }, start + plain},
      {"without a name",
       [this] {
         mail->setUserName({});
         mail->setPassword(u"secret");
       },
       start + plain},
      {"recipients, blind copies and an empty entry",
       [this] {
         mail->setMailTo(u"a@x; b@x;");
         mail->setMailBcc(u"c@x;d@x");
         mail->setReplyTo(u"r@x");
       },
       start +
           "MAIL FROM:me@example\nRCPT TO:a@x\nRCPT TO: b@x\nRCPT TO:\nRCPT TO:c@x\nRCPT TO:d@x\nDATA\n"
           "Content-Type: text/html; Charset = utf-8\nSubject:Hello\nFrom:me@example\nTo:a@x; b@x;\n"
           "Reply-To:r@x\nBcc:<c@x>;<d@x>;\n\n" +
           end},
      {"no recipient, no text",
       [this] {
         mail->setMailTo({});
         mail->setMailBcc({});
         mail->setReplyTo({});
         mail->setMessage({});
       },
       start + "MAIL FROM:me@example\nDATA\nContent-Type: text/html; Charset = utf-8\nSubject:Hello\n"
               "From:me@example\nTo:\nBcc:\n\n\n.\nQUIT\n"},
      {"attachments",
       [this] {
         mail->setMailTo(u"you@example");
         mail->setMessage(u"\r\n\u20AC and \u4E00\r\n");
         mail->setAttachments(pathTo(u"one byte.bin") + u";" + pathTo(u"none.bin") + u";" +
                              pathTo(u"lines.bin"));
       },
       start + "MAIL FROM:me@example\nRCPT TO:you@example\nDATA\nSubject:Hello\nFrom:me@example\n"
               "To:you@example\nBcc:\nContent-Type: multipart/mixed; boundary=\"BOUNDARY\"\n\n--BOUNDARY\n"
               "Content-Type: text/html; charset=\"UTF-8\"\nContent-Transfer-Encoding: quoted-printable\n\n"
               "<br>\n\x80 and ?<br>\n\n"
               "\n--BOUNDARY\nContent-Transfer-Encoding: base64\nContent-Type: application/octet-stream\n"
               "Content-Disposition: attachment; filename=\"one byte.bin\"\n\n/w==\n"
               "\n--BOUNDARY\nContent-Transfer-Encoding: base64\nContent-Type: application/octet-stream\n"
               "Content-Disposition: attachment; filename=\"none.bin\"\n\n\n"
               "\n--BOUNDARY\nContent-Transfer-Encoding: base64\nContent-Type: application/octet-stream\n"
               "Content-Disposition: attachment; filename=\"lines.bin\"\n\n"
               "QUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFB\nQUFB\n"
               "--BOUNDARY--\n.\nQUIT\n"}};
  server.answers["Y2Fm6Q=="] = {"334 UGFzc3dvcmQ6\r\n"};
  server.answers["c2VjcmV0"] = {"235 welcome\r\n"};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    server.lines.clear();
    row.set();
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
  const std::string start = "220 OK, ";
  const std::string rest = "250 OK, 250 OK, 354 OK, 250 OK, 221 OK";
  const std::string garbage(1 << 20, 'x');
  const struct {
    const char* name;
    std::string word;
    std::vector<std::string> answer;
    std::string waits;
    double seconds;
    std::string lastLine;
  } cases[] = {
      {"continuation lines", "HELO", {"250-a\r\n250-b\r\n250 c\r\n"}, start + "250 OK, " + rest, 0, "QUIT"},
      {"only continuation lines", "HELO", {"250-a\r\n250-b\r\n"}, start + "250 TIMEOUT, " + rest, 20, "QUIT"},
      {"pieces of whole lines", "HELO", {"250-a", "\r\n", "250 c"}, start + "250 OK, " + rest, 0, "QUIT"},
      {"a code in pieces", "HELO", {"2", "5", "0", " ", "c\r\n"}, start + "250 TIMEOUT, " + rest, 20, "QUIT"},
      {"a code without a space", "HELO", {"250\r\n"}, start + "250 TIMEOUT, " + rest, 20, "QUIT"},
      {"a space first", "HELO", {" 250 c\r\n"}, start + "250 TIMEOUT, " + rest, 20, "QUIT"},
      {"a longer code", "HELO", {"2500 c\r\n250. c\r\n"}, start + "250 TIMEOUT, " + rest, 20, "QUIT"},
      {"only LF", "HELO", {"200 a\n250 c\n"}, start + "250 TIMEOUT, " + rest, 20, "QUIT"},
      {"another code",
       "DATA",
       {"550 no\r\n"},
       start + "250 OK, 250 OK, 250 OK, 354 TIMEOUT, 250 OK, 221 OK",
       10,
       "QUIT"},
      {"garbage before", "HELO", {garbage, "\r\n250 c\r\n"}, start + "250 OK, " + rest, 0, "QUIT"},
      {"only garbage",
       ".",
       {garbage + std::string(1000, '\0') + "\r"},
       start + "250 OK, 250 OK, 250 OK, 354 OK, 250 TIMEOUT, 221 OK",
       60,
       "QUIT"},
      {"a refusal", "", {FakeServer::kFailure}, "220 TIMEOUT", 20, ""},
      {"an end instead of a greeting", "", {end}, "220 TIMEOUT", 20, ""},
      {"an end after the greeting",
       "",
       {"220 a\r\n", end},
       start + "250 TIMEOUT, 250 TIMEOUT, 250 TIMEOUT, "
               "354 TIMEOUT, 250 TIMEOUT, 221 TIMEOUT",
       120,
       "HELO mail.example"},
      {"an end in the message",
       "DATA",
       {"354 go\r\n", end},
       start + "250 OK, 250 OK, 250 OK, 354 OK, "
               "250 TIMEOUT, 221 TIMEOUT",
       70,
       "."},
  };
  mail->setDebugScript(u"1");
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    removeDebugLog();
    server.lines.clear();
    fake.events.waits.clear();
    const FakeServer good = server;
    server.answers[row.word] = row.answer;
    const double before = fake.clock.seconds;
    sendOnce();
    EXPECT_EQ(waits(), row.waits);
    EXPECT_EQ(fake.clock.seconds - before, row.seconds);
    EXPECT_EQ(server.lines.empty() ? "" : server.lines.back(), row.lastLine);
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
  EXPECT_EQ(waits().substr(0, 25), "220 TIMEOUT, 250 TIMEOUT,");
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

TEST(MailText, FileNamePartIsWhatFollowsTheFolders) {
  const std::pair<TextView, TextView> cases[] = {{u"C:\\a b\\c.txt", u"c.txt"},
                                                 {u"a/b\\c/d", u"d"},
                                                 {u"d", u"d"},
                                                 {u"C:d", u"d"},
                                                 {u"folder\\", u""},
                                                 {u"", u""}};
  for (const auto& [path, name] : cases) EXPECT_EQ(fileNamePart(path), name) << toUtf8(path);
}

}  // namespace
}  // namespace fiar::test
