// Where and how the program is started, and what becomes of it when something of it is missing.

#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "gui/support/game.h"

namespace fiar::gui {
namespace {

namespace fs = std::filesystem;

Desktop& desktop() {
  return Desktop::get();
}

/// A copy of the program in a folder of its own.
class Copy {
public:
  explicit Copy(const std::string& folder = "game") : file_(folder_.path() / folder / "FiveInARow.exe") {
    fs::create_directory(file_.parent_path());
    fs::copy_file(gameProgram(), file_);
  }

  const fs::path& file() const { return file_; }
  fs::path folder() const { return file_.parent_path(); }

private:
  test::TemporaryFolder folder_;
  fs::path file_;
};

void expectPlayable(Game& game) {
  game.pressStart();
  const Position position = game.play({7, 7});
  EXPECT_EQ(meaningAt(position, {7, 7}), 'r') << position;
}

TEST(Start, TwiceGivesTwoGames) {
  Game one;
  Game other;
  // The later one lies on the earlier one, and leaves it for a corner of the screen.
  const Area frame = desktop().screen.frameAt(other.window().area.centre());
  const Point title{frame.centre().x, frame.top + 8};
  desktop().screen.drag(title, {frame.width() / 2, title.y});
  desktop().screen.drag(title, {desktop().screen.area().right - frame.width() / 2, title.y});
  EXPECT_TRUE(eventually([&] {
    const Area first = one.window().area;
    const Area second = other.window().area;
    return first.right < second.left || second.right < first.left;
  }));
  one.locate();
  other.locate();
  expectPlayable(other);
  one.chooseSize(0);
  EXPECT_EQ(one.size(), 10);
  one.play({9, 9});
  EXPECT_EQ(stones(one.position()), 2) << one.position();
  EXPECT_EQ(stones(other.position()), 2) << other.position();
}

TEST(Start, NeedsNoTemporaryFolder) {
  Game game(gameProgram(), {"TEMP", "TMP"});
  expectPlayable(game);
}

TEST(Start, WorksInAnyFolderAndWritesNothingThere) {
  const Copy copy("Pet v vrsto \xE2\x80\x93 \xC5\xA1olska \xC4\x8D\x65ta \xE4\xBA\x94");
  fs::permissions(copy.folder(), fs::perms::owner_read | fs::perms::owner_exec);
  {
    Game game(copy.file());
    expectPlayable(game);
  }
  fs::permissions(copy.folder(), fs::perms::owner_all);
  EXPECT_EQ(std::distance(fs::directory_iterator(copy.folder()), {}), 1);
}

struct Damage {
  const char* resource;
  const char* content;
};

class Damaged : public testing::TestWithParam<Damage> {
protected:
  Damaged() {
    const fs::path file = copy_.folder() / "content";
    std::ofstream(file) << GetParam().content;
    desktop().probe.changeResource(copy_.file(), GetParam().resource, file);
  }

  const fs::path& program() const { return copy_.file(); }

private:
  Copy copy_;
};

class FatallyDamaged : public Damaged {};

TEST_P(FatallyDamaged, ProgramSaysSoOnceAndEnds) {
  const Program program(this->program());
  EXPECT_TRUE(
      eventually([&] { return program.control("Static").number != 0 && program.control("Button").focused; }));
  std::string said;
  int boxes = 0;
  for (const WindowInfo& window : program.windows()) {
    if (window.kind == "Static") said += window.text;
    if (window.container == 0) ++boxes;
  }
  EXPECT_EQ(boxes, 1);
  const std::string resource = GetParam().resource;
  EXPECT_NE(said.find(resource.substr(resource.find('#') + 1)), std::string::npos) << said;
  // The display may still be about to give the box the keyboard.
  EXPECT_TRUE(eventually([&] {
    desktop().screen.type(XK_Return);
    return desktop().probe.exitCode(program.process()).has_value();
  }));
  EXPECT_EQ(program.exitCode(), 1);
}

INSTANTIATE_TEST_SUITE_P(Resource, FatallyDamaged,
                         testing::Values(Damage{"#102", "0000P0000, 1\r\n0000P0001"},
                                         Damage{"BACKGROUND", "no picture at all"},
                                         Damage{"PICTURE3", "GIF89a"}));

class SlightlyDamaged : public Damaged {};

TEST_P(SlightlyDamaged, ProgramPlaysOn) {
  Game game(program());
  expectPlayable(game);
  desktop().screen.click(game.centreOf({7, 7}));
  EXPECT_EQ(stones(game.play({0, 0})), 4);
}

INSTANTIATE_TEST_SUITE_P(Resource, SlightlyDamaged,
                         testing::Values(Damage{"#101", "</cryptoPass><"}, Damage{"WAVERR", "RIFF"}));

}  // namespace
}  // namespace fiar::gui
