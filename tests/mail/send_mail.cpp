// Sends mail with the program's own sockets, as entries on the standard input say, each ended by a NUL:
//   NAME=VALUE         a property of the message, or "folder": where the debug log goes, with "/" at its end
//   patience=SECONDS   after how long without an event the clock jumps to the end of a wait (60)
//   quit=CODE          asks the program to end with this exit code
//   send=              sends the message; prints how often that waited and how many objects there are then

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>

#include "support/allocation_count.h"
#include "support/fake_platform.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/toolkit.h"
#include "win32/services/services.h"

static fiar::Text fromUtf8(const std::string& bytes) {
  return std::filesystem::path(std::u8string(bytes.begin(), bytes.end())).u16string();
}

int main() {
  using Mail = fiar::clsZantorMail;
  const std::map<std::string, Mail::Property Mail::*> properties{
      {"serverName", &Mail::serverName}, {"ServerPort", &Mail::ServerPort}, {"UserName", &Mail::UserName},
      {"Password", &Mail::Password},     {"MailFrom", &Mail::MailFrom},     {"MailTo", &Mail::MailTo},
      {"MailBcc", &Mail::MailBcc},       {"Message", &Mail::Message}};
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
  _setmode(_fileno(stdin), _O_BINARY);
  for (std::string name, value; std::getline(std::getline(std::cin, name, '='), value, '\0');) {
    if (name == "folder") toolkit.values().applicationFolder = fromUtf8(value);
    if (name == "patience") patience = std::stod(value);
    if (name == "quit") PostQuitMessage(std::stoi(value));
    if (name == "Attachments") toolkit.mail().Attachments = fromUtf8(value);
    if (name == "debugScript") toolkit.mail().debugScript = fromUtf8(value);
    if (properties.contains(name)) toolkit.mail().*properties.at(name) = fromUtf8(value);
    if (name != "send") continue;
    fake.events.waits.clear();
    toolkit.mail().SendMail();
    std::cout << fake.events.waits.size() << ' ' << fiar::test::liveAllocationCount() << std::endl;
  }
  PostQuitMessage(0);
  return events.runUntilQuit();
}
