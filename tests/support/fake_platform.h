#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <map>
#include <stdexcept>
#include <vector>

#include "support/files.h"
#include "toolkit/toolkit.h"

namespace fiar::test {

/// Windows-1252, in which "?" stands for every character that it lacks. The five bytes that it leaves
/// undefined stand for the control codes of the same number, as Windows has it.
inline CodePage windows1252() {
  // The bytes from 0x80 on that differ from Latin-1.
  constexpr std::array<char16_t, 32> kFrom80{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  CodePage::Characters characters{};
  for (std::size_t byte = 0; byte < characters.size(); ++byte) characters[byte] = static_cast<char16_t>(byte);
  std::copy(kFrom80.begin(), kFrom80.end(), characters.begin() + 0x80);
  CodePage::Bytes lacking{};
  lacking.fill('?');
  return {characters, lacking};
}

/// Tells the time that the test sets.
struct FakeClock final : Clock {
  double seconds = 43200;
  DateTime date{2026, 3, 14, 12, 0, 0};

  double timer() const override { return seconds; }
  DateTime now() const override { return date; }
  /// Moves the timer on; it starts again at midnight.
  void advance(double by) { seconds = std::fmod(seconds + by, 86400.0); }
};

/// Numbers with a separator of the test's choice, dates as d.m.yyyy h:m:s.
struct FakeRegionalFormat final : RegionalFormat {
  char16_t separator = u'.';

  char16_t decimalSeparator() const override { return separator; }
  Text dateTimeText(const DateTime& when) const override {
    return numberText(when.day) + u"." + numberText(when.month) + u"." + numberText(when.year) + u" " +
           numberText(when.hour) + u":" + numberText(when.minute) + u":" + numberText(when.second);
  }
};

/// Gives the numbers of a script, the last one forever.
struct FakeRandom final : RandomGenerator {
  std::deque<double> script{0};
  std::vector<double> seeds;  ///< all seeds so far, in order

  void seed(double value) override { seeds.push_back(value); }
  double next() override {
    const double value = script.front();
    if (script.size() > 1) script.pop_front();
    return value;
  }
};

/// Writes down what it is asked to play.
struct RecordingSound final : SoundPlayer {
  std::vector<std::optional<std::string>> calls;  ///< the image that was to be played; none for stop()

  void stop() override { calls.emplace_back(std::nullopt); }
  void play(const std::string& waveImage) override { calls.emplace_back(waveImage); }
};

/// Lets the fake clock pass the time that the program waits, and lets the test act in between.
struct FakeEvents final : PendingEvents {
  FakeClock& clock;
  int processed = 0;               ///< how often events were delivered, waits included
  std::vector<double> waits;       ///< the seconds of each wait, in order
  std::function<void()> onEvents;  ///< what happens whenever events are delivered
  double longestWait = 86400;      ///< an "event" ends a longer wait after this many seconds

  explicit FakeEvents(FakeClock& clockOfAll) : clock(clockOfAll) {}
  void process() override {
    ++processed;
    if (onEvents) onEvents();
  }
  void waitAndProcess(double seconds) override {
    waits.push_back(seconds);
    clock.advance(std::min(seconds, longestWait));
    process();
  }
};

/// The program's resources, some of which the test may replace.
struct FakeResources final : Resources {
  std::optional<std::string> configuration = resourceFile("configuration.txt");
  std::optional<std::string> patternTable = resourceFile("pattern_table.dat");

  std::optional<std::string> custom(unsigned number) const override {
    return number == 101 ? configuration : patternTable;
  }
  std::optional<std::string> custom(TextView name) const override {
    return resourceFile(name == u"WAVTAP" ? "tap.wav" : "error.wav");
  }
};

/// A process environment made of what the test says.
struct FakeEnvironment final : Environment {
  mutable std::map<Text, Text> variables;
  Text folder = u"C:\\Games\\Five";
  bool otherInstance = false;

  Text variable(TextView name) const override { return variables[Text(name)]; }
  Text programFolder() const override { return folder; }
  bool otherInstanceRunning() const override { return otherInstance; }
};

/// Writes down the connect text and fails.
struct FakeDatabase final : Database {
  std::optional<Text> connectText;

  void open(TextView text) override {
    connectText = text;
    throw std::runtime_error("no database here");
  }
};

/// A machine that does what the test says. `platform` refers to the other members.
struct FakePlatform {
  FakeClock clock;
  CodePage codePage = windows1252();
  FakeRegionalFormat regional;
  FakeEnvironment environment;
  FakeResources resources;
  FakeRandom random;
  RecordingSound sound;
  FakeEvents events{clock};
  FakeDatabase database;
  Platform platform{clock, codePage, regional, environment, resources, random, sound, events, database};
};

/// A toolkit on a fake machine.
struct FakeToolkit {
  FakePlatform machine;
  Toolkit toolkit{machine.platform};
};

}  // namespace fiar::test
