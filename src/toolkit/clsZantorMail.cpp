#include "toolkit/clsZantorMail.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorFile.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr TextView kLineEnd = u"\r\n";
constexpr TextView kLogName = u"rmail.debug.log";
constexpr std::size_t kBoundaryLength = 30;
constexpr std::size_t kBase64LineLength = 76;

// How long an answer is waited for, in seconds.
constexpr double kGreetingLimit = 20;
constexpr double kCommandLimit = 10;
constexpr double kMessageLimit = 60;

constexpr double kSecondsPerDay = 86400;

// The wait for the connection has no limit of its own; this is only how often it looks without an event.
constexpr double kStatePause = 1;

// The port in decimal digits; 0, which is no server's port, for any other text.
int portNumber(TextView text) {
  int port = 0;
  for (const char16_t digit : trimSpaces(text)) {
    if (digit < u'0' || digit > u'9') return 0;
    port = port * 10 + (digit - u'0');
    if (port > kHighestPort) return 0;
  }
  return port;
}

// The entries of a list, as they stand and empty ones included; an empty list has none.
std::vector<TextView> entriesOf(TextView list) {
  return list.empty() ? std::vector<TextView>() : split(list, u";");
}

Text quoted(TextView text) {
  return Text(u"\"").append(text).append(u"\"");
}

// True while it exists.
class Mark {
public:
  explicit Mark(bool& flag) : flag_(flag = true) {}
  Mark(const Mark&) = delete;
  Mark& operator=(const Mark&) = delete;
  ~Mark() { flag_ = false; }

private:
  bool& flag_;
};

}  // namespace

clsZantorMail::clsZantorMail(Toolkit& toolkit)
    : toolkit_(toolkit), winsock1_(toolkit.platform().newSocket()) {
  winsock1_->OnConnect = [this] { addToLog(u"Connected"); };
  winsock1_->OnDataArrival = [this] { DataArrival(); };
  winsock1_->OnError = [this](TextView description) {
    addToLog(Text(u"winsock.error:").append(description));
  };
}

bool clsZantorMail::SendMail() {
  if (sending_) return false;
  const Mark sending(sending_);
  receiveBuffer_.clear();
  winsock1_->Connect();
  bool greeted = false;
  waitForAnswer(u"220", kGreetingLimit, greeted);
  if (greeted) waitUntilConnected();
  // A server that said nothing is spoken to all the same.
  if (winsock1_->State() == SocketState::Connected) sendMessage();
  if (winsock1_->State() != SocketState::Closed) winsock1_->Close();
  return false;
}

// Deliberate: one would expect a wrong answer to end the dialogue, but it goes on whatever comes.
void clsZantorMail::sendMessage() {
  sendEnvelope();
  sendHeader();
  if (!Attachments.empty()) sendTextPartHeader();
  send({});
  send(replaced(Message.text(), kLineEnd, u"<br>\r\n"));
  sendAttachments();
  command(u".", u"250", kMessageLimit);
  command(u"QUIT", u"221", kCommandLimit);
}

void clsZantorMail::sendEnvelope() {
  command(u"HELO " + serverName.text(), u"250", kGreetingLimit);
  if (!UserName.text().empty() && !Password.text().empty()) {
    const CodePage& codePage = toolkit_.platform().codePage;
    command(u"AUTH LOGIN", u"334", kCommandLimit);
    command(clsZantorBas::base64(codePage.encode(UserName.text())), u"334", kCommandLimit);
    command(clsZantorBas::base64(codePage.encode(Password.text())), u"235", kCommandLimit);
  }
  command(u"MAIL FROM:" + MailFrom.text(), u"250", kCommandLimit);
  for (const Text& list : {MailTo.text(), MailBcc.text()}) {
    for (const TextView entry : entriesOf(list)) {
      command(Text(u"RCPT TO:").append(entry), u"250", kCommandLimit);
    }
  }
  command(u"DATA", u"354", kCommandLimit);
}

void clsZantorMail::sendHeader() {
  if (Attachments.empty()) send(u"Content-Type: text/html; Charset = utf-8");
  send(u"Subject:" + subject.text());
  send(u"From:" + MailFrom.text());
  send(u"To:" + MailTo.text());
  if (!ReplyTo.text().empty()) send(u"Reply-To:" + ReplyTo.text());
  // Deliberate: one would expect the message to hide the blind copies.
  Text blindCopies = u"Bcc:";
  for (const TextView entry : entriesOf(MailBcc.text())) blindCopies.append(u"<").append(entry).append(u">;");
  send(blindCopies);
}

void clsZantorMail::sendTextPartHeader() {
  boundary_ = toolkit_.bas().uniqueText(kBoundaryLength);
  send(u"Content-Type: multipart/mixed; boundary=" + quoted(boundary_));
  send({});
  send(u"--" + boundary_);
  send(u"Content-Type: text/html; charset=" + quoted(u"UTF-8"));
  // Deliberate: one would expect the body to be encoded as this says, but it follows as it stands.
  send(u"Content-Transfer-Encoding: quoted-printable");
}

void clsZantorMail::sendAttachments() {
  const Text list = Attachments;  // a handler may set it meanwhile
  const std::vector<TextView> paths = entriesOf(list);
  for (const TextView path : paths) {
    send({});
    send(u"--" + boundary_);
    send(u"Content-Transfer-Encoding: base64");
    send(u"Content-Type: application/octet-stream");
    send(u"Content-Disposition: attachment; filename=" + quoted(clsZantorFile::fileNamePart(path)));
    send({});
    send(clsZantorBas::brokenIntoLines(clsZantorBas::base64(clsZantorFile::fileContent(path)),
                                       kBase64LineLength));
  }
  if (!paths.empty()) send(u"--" + boundary_ + u"--");
}

void clsZantorMail::waitUntilConnected() {
  const auto pending = [this] {
    const SocketState state = winsock1_->State();
    return state != SocketState::Connected && state != SocketState::Closed && state != SocketState::Closing &&
           state != SocketState::Error;
  };
  while (pending()) toolkit_.platform().events.waitAndProcess(kStatePause);
}

void clsZantorMail::command(TextView line, TextView code, double limit) {
  send(line);
  bool ok = false;
  waitForAnswer(code, limit, ok);
}

void clsZantorMail::send(TextView line) {
  receiveBuffer_.clear();
  sendLine(Text(line).append(kLineEnd));
}

// Sends the text as it stands; who calls has added the line end.
void clsZantorMail::sendLine(TextView text) {
  winsock1_->SendData(toolkit_.platform().codePage.encode(text));
  addToLog(Text(u"winsock.send:").append(text));
}

void clsZantorMail::waitForAnswer(TextView code, double limit, bool& ok) {
  const Platform& platform = toolkit_.platform();
  ok = false;
  const double start = platform.clock.timer();
  // Deliberate: the timer starts again at midnight, which ends the wait; one would expect it to go on.
  for (double now = start; !ok && std::abs(now - start) < limit; now = platform.clock.timer()) {
    ok = findAnswer(code);
    const double left = limit - std::abs(now - start);
    if (!ok) platform.events.waitAndProcess(std::min(left, kSecondsPerDay - now));
  }
  addToLog(Text(u"waitForAnswer:").append(code).append(ok ? u" OK" : u" TIMEOUT"));
}

// Whether one of the lines that have arrived since the last look begins with the code and a space.
bool clsZantorMail::findAnswer(TextView code) {
  // Taken out as a whole, so that no line is looked at twice and nothing piles up.
  const Text arrived = std::exchange(receiveBuffer_, {});
  const Text start = Text(code).append(u" ");
  for (const TextView line : split(arrived, kLineEnd)) {
    if (line.starts_with(start)) return true;
  }
  return false;
}

void clsZantorMail::DataArrival() {
  Text data = toolkit_.platform().codePage.decode(winsock1_->GetData());
  // Whatever arrives together counts as whole lines.
  if (!data.ends_with(kLineEnd)) data += kLineEnd;
  receiveBuffer_ += data;
}

void clsZantorMail::propertySet(TextView label, const Text& value) {
  addToLog(Text(label).append(value));
  winsock1_->RemoteHost = serverName.text();
  winsock1_->RemotePort = portNumber(ServerPort.text());
}

// Adds an entry to the debug log while that is switched on.
void clsZantorMail::addToLog(const Text& entry) {
  if (!clsZantorBas::GetTF(debugScript)) return;
  toolkit_.file().AppendToFile(Text(toolkit_.values().applicationFolder).append(kLogName), entry, 0);
}

}  // namespace fiar
