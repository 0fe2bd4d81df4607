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
  /// A text that describes the message; setting it is written to the debug log.
  class Property {
  public:
    Property(clsZantorMail& mail, TextView label) : mail_(mail), label_(label) {}
    Property& operator=(TextView value) {
      text_ = value;
      mail_.propertySet(label_, text_);
      return *this;
    }
    const Text& text() const { return text_; }

  private:
    clsZantorMail& mail_;
    TextView label_;
    Text text_;
  };

  /// \param toolkit the toolkit that this is an instance of; outlives it. Its platform has sockets.
  explicit clsZantorMail(Toolkit& toolkit);
  clsZantorMail(const clsZantorMail&) = delete;
  clsZantorMail& operator=(const clsZantorMail&) = delete;
  ~clsZantorMail() = default;

  /// The server's name or address, which is also what it is greeted with.
  Property serverName{*this, u"mail_ServerName set:"};
  /// The server's port in digits; anything else is a port that no server has.
  Property ServerPort{*this, u"mail_Port  set:"};
  /// Name and password to log in with; without both of them the message is sent without a login.
  Property UserName{*this, u"username set:"};
  Property Password{*this, u"pwd set:"};
  /// The sender's address, as it is to stand after "MAIL FROM:" and "From:".
  Property MailFrom{*this, u"mail_from set:"};
  /// The recipients' addresses, separated by ";" without spaces.
  Property MailTo{*this, u"mail_To set:"};
  /// The blind copies' addresses, separated by ";" without spaces. They can be read in the message.
  Property MailBcc{*this, u"Mail_Bcc set:"};
  /// The address for answers; empty: the message names none.
  Property ReplyTo{*this, u"mail_RepylTo set:"};
  Property subject{*this, u"mail_Subject set:"};
  /// The body, HTML with CR LF between its lines.
  Property Message{*this, u"mail_Message set:"};
  /// The paths of the files to attach, separated by ";"; one that cannot be read becomes an empty attachment.
  Text Attachments;
  /// Whether to write the debug log, in the words that clsZantorBas::GetTF() takes for yes.
  Text debugScript;

  /// Sends the message that the properties describe and delivers window events meanwhile. Always false
  /// (deliberate: one would expect the outcome): only the debug log tells how it went. A server that does not
  /// answer as it should costs at most 160 seconds and 10 for each recipient; a debug log that cannot be
  /// written adds 0.6 seconds for each of its entries. A call during another one does nothing.
  bool SendMail();

private:
  void propertySet(TextView label, const Text& value);
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
  Text boundary_;       ///< of the message being sent
  Text receiveBuffer_;  ///< what has arrived and was not searched yet, in whole lines
  bool sending_ = false;
  std::unique_ptr<SocketControl> winsock1_;  ///< last, so that its events end first
};

}  // namespace fiar
