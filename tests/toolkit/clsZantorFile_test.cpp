#include "toolkit/clsZantorFile.h"

#include <gtest/gtest.h>

#include "support/fake_platform.h"
#include "support/temporary_folder.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr std::int16_t kTextMode = 0;
constexpr std::int16_t kBinaryMode = -1;

class AppendToFile : public testing::Test {
protected:
  void append(TextView name, TextView data, std::int16_t mode) {
    toolkit.file().AppendToFile(folder.text() + Text(name), data, mode);
  }

  test::TemporaryFolder folder;
  test::FakePlatform machine;
  Toolkit toolkit{machine.platform};
};

TEST_F(AppendToFile, EndsEachTextWithALineEnd) {
  append(u"lines.txt", u"first", kTextMode);
  append(u"lines.txt", u"", kTextMode);
  append(u"lines.txt", u"a\nb", kTextMode);
  EXPECT_EQ(folder.contents(u"lines.txt"), "first\r\n\r\na\nb\r\n");
  EXPECT_TRUE(machine.events.waits.empty());
}

TEST_F(AppendToFile, JoinsBinaryTextsOneByteACharacter) {
  append(u"\u017Eiga.bin", u"\u20AC\u017E", kBinaryMode);
  append(u"\u017Eiga.bin", TextView(u"\0\n\u4E2D", 3), 1);
  EXPECT_EQ(folder.contents(u"\u017Eiga.bin"), std::string("\x80\x9E\0\n?", 5));
}

// Each failing step costs a pause: the opening all five, every step after it one more.
TEST_F(AppendToFile, GivesUpAfterFiveFailures) {
  append(u"missing\\lines.txt", u"lost", kTextMode);
  EXPECT_EQ(machine.events.waits, std::vector<double>(6, 0.1));
  machine.events.waits.clear();
  append(u"missing\\bytes.bin", u"lost", kBinaryMode);
  EXPECT_EQ(machine.events.waits, std::vector<double>(7, 0.1));
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "missing"));
}

TEST_F(AppendToFile, GivesUpAWriteThatFailed) {
  constexpr TextView kFullDisk = u"/dev/full";
  if (!std::filesystem::exists(nativePath(kFullDisk))) GTEST_SKIP() << "no full disk here";
  toolkit.file().AppendToFile(kFullDisk, u"lost", kTextMode);
  EXPECT_EQ(machine.events.waits, std::vector<double>(5, 0.1));
}

TEST_F(AppendToFile, WritesOnceTheFileCanBeOpened) {
  machine.events.onEvents = [this] {
    if (machine.events.waits.size() == 4) std::filesystem::create_directory(folder.path() / "late");
  };
  append(u"late\\lines.txt", u"saved", kTextMode);
  EXPECT_EQ(machine.events.waits.size(), 4U);
  EXPECT_EQ(folder.contents(u"late\\lines.txt"), "saved\r\n");
}

}  // namespace
}  // namespace fiar
