// Sends messages with the program's own sockets, as send() in real_server_test.py asks, and prints how often
// each of them waited. The debug log goes to the current folder.

#include <fcntl.h>
#include <io.h>

#include <chrono>
#include <iostream>

#include "support/fake_platform.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"
#include "win32/services/services.h"

// NOLINTNEXTLINE(bugprone-exception-escape): the test that runs this fails then
int main() {
  fiar::win32::Win32Events events;
  double patience = 0;  // so many seconds without an event, and the clock jumps to the end of the wait
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
  const auto next = [&fake] {
    std::string text;
    std::getline(std::cin, text, '\0');
    return fake.codePage.decode(text);
  };
  _setmode(_fileno(stdin), _O_BINARY);
  for (int exitCode = 0; std::cin >> patience >> exitCode && std::cin.ignore();) {
    if (exitCode != 0) PostQuitMessage(exitCode);
    for (auto* property : {&mail.serverName, &mail.ServerPort, &mail.MailFrom, &mail.MailTo, &mail.MailBcc,
                           &mail.UserName, &mail.Password, &mail.Message}) {
      *property = next();
    }
    mail.Attachments = next();
    fake.events.waits.clear();
    mail.SendMail();
    std::cout << fake.events.waits.size() << std::endl;
  }
  PostQuitMessage(0);
  return events.runUntilQuit();
}
