#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <regex>

#include "support/fake_platform.h"
#include "support/temporary_folder.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/mail_text.h"
#include "toolkit/toolkit.h"

namespace fiar::test {
namespace {

/// A socket control and the server behind it, which answers in pieces, of which each arrives at once and ends
/// a wait.
class FakeSocket final : public SocketControl {
public:
  /// Instead of a piece: the connection fails, or the server ends it.
  static constexpr const char* kFailure = "<failure>";
  static constexpr const char* kEnd = "<end>";

  explicit FakeSocket(FakeEvents& events) : events_(events) {}

  /// What is answered to the connection ("") and to each command, by its first word; to others, nothing.
  std::map<std::string, std::vector<std::string>> answers{
      {"", {"220 here\r\n"}},    {"HELO", {"250 hello\r\n"}}, {"AUTH", {"334 VXNlcm5hbWU6\r\n"}},
      {"MAIL", {"250 ok\r\n"}},  {"RCPT", {"250 ok\r\n"}},    {"DATA", {"354 go on\r\n"}},
      {".", {"250 queued\r\n"}}, {"QUIT", {"221 bye\r\n"}}};
  std::vector<std::string> lines;  ///< what the client sent, without line ends

  void Connect() override {
    state_ = SocketState::Connecting;
    answer("");
  }
  SocketState State() const override { return state_; }
  void SendData(std::string_view bytes) override {
    if (state_ != SocketState::Connected) return;
    unfinished_ += bytes;
    for (std::size_t end = 0; (end = unfinished_.find("\r\n")) != std::string::npos;) {
      lines.push_back(unfinished_.substr(0, end));
      unfinished_.erase(0, end + 2);
      if (!lines.back().empty()) answer(lines.back().substr(0, lines.back().find_first_of(" :")));
    }
  }
  std::string GetData() override { return std::exchange(arrived_, {}); }
  void Close() override { state_ = SocketState::Closed; }

  /// Raises the event that is due, if any.
  void deliver() {
    if (pieces_.empty()) return;
    arrived_ = std::move(pieces_.front());
    pieces_.pop_front();
    if (pieces_.empty()) events_.longestWait = 86400;
    if (arrived_ == kFailure) {
      state_ = SocketState::Error;
      return OnError(u"connection refused");
    }
    if (state_ == SocketState::Connecting) {
      state_ = SocketState::Connected;
      OnConnect();
    }
    if (arrived_ == kEnd) {
      state_ = SocketState::Closing;
    } else {
      OnDataArrival();
    }
  }

private:
  void answer(const std::string& word) {
    if (!pieces_.empty() && pieces_.back() == kEnd) return;
    for (const std::string& piece : answers[word]) pieces_.push_back(piece);
    if (!pieces_.empty()) events_.longestWait = 0;
  }

  FakeEvents& events_;
  SocketState state_ = SocketState::Closed;
  std::string unfinished_;
  std::string arrived_;
  std::deque<std::string> pieces_;
};

/// A mail client with a message to send, and an empty application folder.
class MailTest : public testing::Test {
public:
  FakePlatform fake;
  FakeSocket* socket = nullptr;
  TemporaryFolder folder;
  std::unique_ptr<Toolkit> toolkit;
  clsZantorMail* mail = nullptr;

  void SetUp() override {
    fake.platform.newSocket = [this] {
      auto made = std::make_unique<FakeSocket>(fake.events);
      socket = made.get();
      return made;
    };
    fake.events.onEvents = [this] { socket->deliver(); };
    toolkit = std::make_unique<Toolkit>(fake.platform);
    toolkit->values().applicationFolder = folder.text();
    mail = &toolkit->mail();
    setMessage();
  }

  void setMessage() const {
    mail->setServerName(u"mail.example");
    mail->setServerPort(u"2525");
    mail->setMailFrom(u"me@example");
    mail->setMailTo(u"you@example");
    mail->setSubject(u"Hello");
    mail->setMessage(u"one\r\ntwo");
  }
  /// Gives the seconds that it took.
  double send() const {
    const double before = fake.clock.seconds;
    EXPECT_FALSE(mail->SendMail());
    EXPECT_EQ(socket->State(), SocketState::Closed);
    return fake.clock.seconds - before;
  }
};

TEST_F(MailTest, SaysExactlyTheseLines) {
  const auto said = [this] {
    socket->lines.clear();
    EXPECT_EQ(send(), 0);
    std::string text;
    for (const std::string& line : socket->lines) text += line + "\n";
    return std::regex_replace(text, std::regex("(--|\")([A-Za-z0-9]{30})(?=--|\"|\n)"), "$1BOUNDARY");
  };
  const std::string start = "HELO mail.example\n";
  const std::string end = "one<br>\ntwo\n.\nQUIT\n";
  const std::string envelope = "MAIL FROM:me@example\nRCPT TO:you@example\nDATA\n";
  const std::string html = "Content-Type: text/html; Charset = utf-8\n";
  const std::string from = "Subject:Hello\nFrom:me@example\n";
  const std::string plain = envelope + html + from + "To:you@example\nBcc:\n\n" + end;
  EXPECT_EQ(said(), start + plain);

  socket->answers["Y2Fm6Q=="] = {"334 UGFzc3dvcmQ6\r\n"};
  socket->answers["c2VjcmV0"] = {"235 welcome\r\n"};
  mail->setPassword(u"secret");
  EXPECT_EQ(said(), start + plain);
  mail->setUserName(u"caf\u00E9");
  EXPECT_EQ(said(), start + "AUTH LOGIN\nY2Fm6Q==\nc2VjcmV0\n" + plain);
  mail->setPassword({});
  EXPECT_EQ(said(), start + plain);

  mail->setMailTo(u"a@x; b@x;");
  mail->setMailBcc(u"c@x;d@x");
  mail->setReplyTo(u"r@x");
  const std::string recipients = "RCPT TO:a@x\nRCPT TO: b@x\nRCPT TO:\nRCPT TO:c@x\nRCPT TO:d@x\n";
  EXPECT_EQ(said(), start + "MAIL FROM:me@example\n" + recipients + "DATA\n" + html + from +
                        "To:a@x; b@x;\nReply-To:r@x\nBcc:<c@x>;<d@x>;\n\n" + end);
  mail->setMailTo({});
  mail->setMailBcc({});
  mail->setReplyTo({});
  mail->setMessage({});
  EXPECT_EQ(said(), start + "MAIL FROM:me@example\nDATA\n" + html + from + "To:\nBcc:\n\n\n.\nQUIT\n");

  std::ofstream(folder.path() / "one byte.bin") << '\xFF';
  std::ofstream(folder.path() / "lines") << std::string(60, 'A');
  mail->setMailTo(u"you@example");
  mail->setMessage(u"\r\n\u20AC and \u4E00\r\n");
  mail->setAttachments(folder.text() + u"one byte.bin;none;" + folder.text() + u"lines");
  const std::string part =
      "\n--BOUNDARY\nContent-Transfer-Encoding: base64\nContent-Type: application/octet-stream\n"
      "Content-Disposition: attachment; filename=";
  EXPECT_EQ(said(),
            start + envelope + from +
                "To:you@example\nBcc:\nContent-Type: multipart/mixed; boundary=\"BOUNDARY\"\n\n--BOUNDARY\n"
                "Content-Type: text/html; charset=\"UTF-8\"\nContent-Transfer-Encoding: quoted-printable\n\n"
                "<br>\n\x80 and ?<br>\n\n" +
                part + "\"one byte.bin\"\n\n/w==\n" + part + "\"none\"\n\n\n" + part + "\"lines\"\n\n" +
                "QUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFB\nQUFB\n--"
                "BOUNDARY--\n.\nQUIT\n");
  EXPECT_EQ(socket->RemoteHost, u"mail.example");
}

TEST_F(MailTest, WaitsForEachAnswerAsLongAsItMayAndSendsNothingElseMeanwhile) {
  socket->answers = {{"", {""}}};  // connected, then silence
  fake.events.onEvents = [this] {
    socket->deliver();
    EXPECT_FALSE(mail->SendMail());
  };
  mail->setMailBcc(u"c@x");
  mail->setUserName(u"me");
  mail->setPassword(u"secret");
  fake.clock.seconds = 86395;
  send();
  // Midnight ends the first wait. The empty answer that stands for the connection costs no time, but a second
  // look at the greeting's wait.
  EXPECT_EQ(fake.events.waits, (std::vector<double>{5, 5, 20, 10, 10, 10, 10, 10, 10, 10, 60, 10}));
  EXPECT_EQ(socket->lines.back(), "QUIT");
}

TEST_F(MailTest, GoesOnWhateverTheServerDoes) {
  const std::string end = FakeSocket::kEnd;
  const std::string garbage(1 << 20, 'x');
  const struct {
    const char* name;
    std::string word;
    std::vector<std::string> answer;
    double seconds;
    std::size_t linesSent;
  } cases[] = {{"continuation lines", "HELO", {"250-a\r\n250-b\r\n250 c\r\n"}, 0, 14},
               {"only continuation lines", "HELO", {"250-a\r\n250-b\r\n"}, 20, 14},
               {"pieces of whole lines", "HELO", {"250-a", "\r\n", "250 c"}, 0, 14},
               {"a code in pieces", "HELO", {"2", "5", "0", " ", "c\r\n"}, 20, 14},
               {"a code without a space", "HELO", {"250\r\n"}, 20, 14},
               {"a space first", "HELO", {" 250 c\r\n"}, 20, 14},
               {"a longer code", "HELO", {"2500 c\r\n250. c\r\n"}, 20, 14},
               {"only LF", "HELO", {"200 a\n250 c\n"}, 20, 14},
               {"another code", "DATA", {"550 no\r\n"}, 10, 14},
               {"garbage before", "HELO", {garbage, "\r\n250 c\r\n"}, 0, 14},
               {"only garbage", ".", {garbage + std::string(1000, '\0') + "\r"}, 60, 14},
               {"a refusal", "", {FakeSocket::kFailure}, 20, 0},
               {"an end instead of a greeting", "", {end}, 20, 0},
               {"an end after the greeting", "", {"220 a\r\n", end}, 120, 1},
               {"an end in the message", "DATA", {"354 go\r\n", end}, 70, 13}};
  const auto good = socket->answers;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    socket->lines.clear();
    socket->answers = good;
    socket->answers[row.word] = row.answer;
    EXPECT_EQ(send(), row.seconds);
    EXPECT_EQ(socket->lines.size(), row.linesSent);
  }
}

TEST_F(MailTest, WritesTheDebugLog) {
  mail->setDebugScript(u"on");
  setMessage();
  mail->setUserName(u"me");
  mail->setPassword(u"");
  mail->setMailBcc(u"b@x");
  mail->setReplyTo(u"r@x");
  mail->setAttachments(u"");
  socket->answers["RCPT"] = {FakeSocket::kFailure};
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

  mail->setDebugScript(u"0");
  send();
  EXPECT_EQ(folder.contents(u"rmail.debug.log"), log);
}

TEST_F(MailTest, TakesOnlyDigitsAsAPort) {
  const std::pair<TextView, int> cases[] = {
      {u" 587 ", 587}, {u"65535", 65535},           {u"65536", 0}, {u"", 0}, {u"-1", 0},
      {u"smtp", 0},    {u"99999999999999999999", 0}};
  for (const auto& [text, port] : cases) {
    mail->setServerPort(text);
    EXPECT_EQ(socket->RemotePort, port) << testing::PrintToString(text);
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
