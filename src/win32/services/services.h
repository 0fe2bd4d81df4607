#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/mersenne_twister.h"
#include "platform/platform.h"
#include "win32/handle.h"
#include "win32/services/events.h"

namespace fiar::win32 {

/// The system's clock.
class Win32Clock final : public Clock {
public:
  double timer() const override;
  DateTime now() const override;
};

/// The ANSI code page of a number, the system's own by default. Every byte has a character of its own, so
/// that bytes survive the way to text and back. A character that the code page lacks becomes the nearest one,
/// as the system has it, or "?". Windows-1252 stands for UTF-8, which has no such bytes.
CodePage ansiCodePage(unsigned number = GetACP());

/// The user's regional format. The decimal separator is read once, so that a number is read back as it was
/// written even when the user changes the setting meanwhile.
class Win32RegionalFormat final : public RegionalFormat {
public:
  Win32RegionalFormat();

  char16_t decimalSeparator() const override { return separator_; }
  Text dateTimeText(const DateTime& when) const override;

private:
  char16_t separator_;
};

/// This process's environment. Marks the process as a running instance for as long as it exists.
class Win32Environment final : public Environment {
public:
  /// \param instanceName the name by which instances of the program in one user's session find each other.
  explicit Win32Environment(TextView instanceName = u"FiveInARow.6C1B0C5E-52F3-4E0B-9E63-0F3D2A7B8C41");

  Text variable(TextView name) const override;
  Text programFolder() const override;
  bool otherInstanceRunning() const override { return otherInstanceRunning_; }

private:
  KernelHandle instanceMark_;
  bool otherInstanceRunning_ = false;
};

/// The resources inside the program's own .exe.
class Win32Resources final : public Resources {
public:
  std::optional<std::string> custom(unsigned number) const override;
  std::optional<std::string> custom(TextView name) const override;
};

/// Plays through the system's own player of short sounds; silent from its destruction on.
class Win32SoundPlayer final : public SoundPlayer {
public:
  Win32SoundPlayer() = default;
  Win32SoundPlayer(const Win32SoundPlayer&) = delete;
  Win32SoundPlayer& operator=(const Win32SoundPlayer&) = delete;
  Win32SoundPlayer(Win32SoundPlayer&&) = delete;
  Win32SoundPlayer& operator=(Win32SoundPlayer&&) = delete;
  ~Win32SoundPlayer() override;

  void stop() override;
  void play(const std::string& waveImage) override;

private:
  std::vector<char> playing_;  ///< the image that the system may be reading in the background
};

/// A socket control over a non-blocking Windows socket. Its events are messages to a hidden window. Throws
/// where the system has no network library.
std::unique_ptr<SocketControl> newSocket();

/// All services of this machine, and the Platform that refers to them.
struct Win32Services {
  Win32Clock clock;
  CodePage codePage = ansiCodePage();
  Win32RegionalFormat regional;
  Win32Environment environment;
  Win32Resources resources;
  MersenneTwister random;
  Win32SoundPlayer sound;
  Win32Events events;
  RecordedDatabase database;
  Platform platform{clock,  codePage, regional, environment, resources,
                    random, sound,    events,   database,    newSocket};
};

}  // namespace fiar::win32
