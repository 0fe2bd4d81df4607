#pragma once

#include <memory>

#include "platform/platform.h"

namespace fiar {

class Toolkit;

/// Sends one HTML message at a time, with attachments or without, to an SMTP server. All properties are texts
/// and begin empty. With the debug switch on, what is set, sent and waited for goes to the file
/// "rmail.debug.log" in the application folder, credentials and contents in plain.
class clsZantorMail {
public:
  /// \param toolkit the toolkit that this is an instance of; outlives it. Its platform has a socket factory.
  explicit clsZantorMail(Toolkit& toolkit);
  clsZantorMail(const clsZantorMail&) = delete;
  clsZantorMail& operator=(const clsZantorMail&) = delete;
  clsZantorMail(clsZantorMail&&) = delete;
  clsZantorMail& operator=(clsZantorMail&&) = delete;
  ~clsZantorMail() = default;

  /// The server's name or address, which is also what it is greeted with.
  const Text& serverName() const { return serverName_; }
  void setServerName(TextView value);
  /// The server's port in digits; anything else is a port that no server has.
  const Text& ServerPort() const { return serverPort_; }
  void setServerPort(TextView value);
  /// Name and password to log in with; without both of them the message is sent without a login.
  const Text& UserName() const { return userName_; }
  void setUserName(TextView value);
  const Text& Password() const { return password_; }
  void setPassword(TextView value);
  /// The sender's address, as it is to stand after "MAIL FROM:" and "From:".
  const Text& MailFrom() const { return mailFrom_; }
  void setMailFrom(TextView value);
  /// The recipients' addresses, separated by ";" without spaces.
  const Text& MailTo() const { return mailTo_; }
  void setMailTo(TextView value);
  /// The blind copies' addresses, separated by ";" without spaces. They can be read in the message.
  const Text& MailBcc() const { return mailBcc_; }
  void setMailBcc(TextView value);
  /// The address for answers; empty: the message names none.
  const Text& ReplyTo() const { return replyTo_; }
  void setReplyTo(TextView value);
  const Text& subject() const { return subject_; }
  void setSubject(TextView value);
  /// The body, HTML with CR LF between its lines.
  const Text& Message() const { return message_; }
  void setMessage(TextView value);
  /// The paths of the files to attach, separated by ";"; one that cannot be read becomes an empty attachment.
  const Text& Attachments() const { return attachments_; }
  void setAttachments(TextView value) { attachments_ = value; }
  /// Whether to write the debug log, in the words that clsZantorBas::GetTF() takes for yes.
  const Text& debugScript() const { return debugScript_; }
  void setDebugScript(TextView value) { debugScript_ = value; }

  /// Sends the message that the properties describe and delivers window events meanwhile. Always false
  /// (deliberate: one would expect the outcome): only the debug log tells how it went. A server that does not
  /// answer as it should costs at most 160 seconds and 10 for each recipient; a debug log that cannot be
  /// written adds 0.6 seconds for each of its entries. A call during another one does nothing.
  bool SendMail();

private:
  void setLogged(Text& property, TextView value, TextView label);
  void addToLog(const Text& entry);

  void sendMessage();
  void sendEnvelope();
  void sendHeader();
  void sendTextPartHeader();
  void sendAttachments();

  void waitUntilConnected();
  void command(TextView line, TextView code, double limit);
  void send(TextView line);
  void sendLine(TextView text);
  void waitForAnswer(TextView code, double limit, bool& ok);
  bool findAnswer(TextView code);
  void DataArrival();

  Toolkit& toolkit_;
  Text serverName_;
  Text serverPort_;
  Text userName_;
  Text password_;
  Text mailFrom_;
  Text mailTo_;
  Text mailBcc_;
  Text replyTo_;
  Text subject_;
  Text message_;
  Text attachments_;
  Text debugScript_;

  Text boundary_;       ///< of the message being sent
  Text receiveBuffer_;  ///< what has arrived and was not searched yet, in whole lines
  double waitStart_ = 0;
  bool sending_ = false;
  std::unique_ptr<SocketControl> winsock1_;  ///< last, so that its events end first
};

}  // namespace fiar
