// What is heard. The sounds are told apart by their lengths: a tap lasts about 46 ms, an error sound 240 ms.

#include <gtest/gtest.h>

#include "gui/support/game.h"

namespace fiar::gui {
namespace {

constexpr int kLongestTap = 120;
constexpr int kShortestErrorSound = 180;

/// What has been heard, a letter for each sound: "t" a tap, "e" an error sound, "?" something between.
std::string heard(const SoundRecording& recording) {
  std::string letters;
  for (const int length : recording.sounds()) {
    letters += length <= kLongestTap ? 't' : length >= kShortestErrorSound ? 'e' : '?';
  }
  return letters;
}

class Sound : public testing::Test {
protected:
  void SetUp() override {
    if (!Desktop::get().sound) GTEST_SKIP() << "there is no sound server";
  }

  static bool soundIsOn(const Game& game) { return game.control("Button", "Sound").checked; }
  static void switchSound(const Game& game) {
    const bool before = soundIsOn(game);
    Desktop::get().screen.click(game.control("Button", "Sound").area.centre());
    EXPECT_TRUE(eventually([&] { return soundIsOn(game) != before; }));
  }
};

TEST_F(Sound, TapsForAStoneAndWarnsOfATakenCellUnlessSwitchedOff) {
  Game game;
  game.pressStart();
  const SoundRecording recording;
  game.play({3, 3});
  EXPECT_TRUE(eventually([&] { return heard(recording) == "t"; })) << heard(recording);
  Desktop::get().screen.click(game.centreOf({3, 3}));
  EXPECT_TRUE(eventually([&] { return heard(recording) == "te"; })) << heard(recording);

  switchSound(game);
  Desktop::get().screen.click(game.centreOf({3, 3}));
  game.play({0, 14});
  switchSound(game);
  game.play({14, 0});
  EXPECT_TRUE(eventually([&] { return heard(recording).size() > 2; }));
  EXPECT_EQ(heard(recording), "tet");
}

TEST_F(Sound, CutsTheOneBefore) {
  Game game;
  game.pressStart();
  const SoundRecording recording;
  game.play({3, 3});
  EXPECT_TRUE(eventually([&] { return heard(recording) == "t"; })) << heard(recording);
  Desktop::get().screen.click(game.centreOf({3, 3}));
  Desktop::get().screen.click(game.centreOf({0, 14}));
  EXPECT_TRUE(eventually([&] { return heard(recording).size() > 1; }));
  // What is left of the error sound, with the tap after it, is shorter than the error sound.
  EXPECT_EQ(heard(recording).find('e'), std::string::npos) << heard(recording);
}

}  // namespace
}  // namespace fiar::gui
