// Sends mail with the program's own sockets, as entries on the standard input say, each ended by a NUL. The
// debug log goes to the current folder.
//   NAME=VALUE         a property of the message
//   patience=SECONDS   after how long without an event the clock jumps to the end of a wait (60)
//   quit=CODE          asks the program to end with this exit code
//   send=              sends the message, and prints how often that waited

#include <fcntl.h>
#include <io.h>

#include <chrono>
#include <filesystem>
#include <iostream>

#include "support/fake_platform.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"
#include "win32/services/services.h"

// NOLINTNEXTLINE(bugprone-exception-escape): the test that runs this fails then
int main() {
  fiar::win32::Win32Events events;
  double patience = 60;
  fiar::test::FakePlatform fake;
  fake.platform.newSocket = fiar::win32::newSocket;
  fake.events.longestWait = 0;  // time passes only in a wait in which nothing happens, and then at once
  fake.events.onEvents = [&] {
    const double longest = std::min(fake.events.waits.back(), patience);
    const auto start = std::chrono::steady_clock::now();
    events.waitAndProcess(longest);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    if (passed.count() >= longest) fake.clock.advance(fake.events.waits.back());
  };
  fiar::Toolkit toolkit(fake.platform);
  fiar::clsZantorMail& mail = toolkit.mail();
  mail.debugScript = u"on";
  const std::map<std::string, fiar::clsZantorMail::Property*> properties{
      {"serverName", &mail.serverName}, {"ServerPort", &mail.ServerPort}, {"UserName", &mail.UserName},
      {"Password", &mail.Password},     {"MailFrom", &mail.MailFrom},     {"MailTo", &mail.MailTo},
      {"MailBcc", &mail.MailBcc},       {"Message", &mail.Message}};
  _setmode(_fileno(stdin), _O_BINARY);
  for (std::string name, value; std::getline(std::getline(std::cin, name, '='), value, '\0');) {
    const auto text = std::filesystem::path(std::u8string(value.begin(), value.end())).u16string();
    if (name == "patience") patience = std::stod(value);
    if (name == "quit") PostQuitMessage(std::stoi(value));
    if (name == "Attachments") mail.Attachments = text;
    if (properties.contains(name)) *properties.at(name) = text;
    if (name != "send") continue;
    fake.events.waits.clear();
    mail.SendMail();
    std::cout << fake.events.waits.size() << std::endl;
  }
  PostQuitMessage(0);
  return events.runUntilQuit();
}
