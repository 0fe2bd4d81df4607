#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "support/loaded_toolkit.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorFile.h"

namespace fiar {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct ToolkitTest : testing::Test, test::FakeToolkit {
  test::FakeEvents& events = machine.events;
  test::TemporaryFolder folder;

  /// Returns how many pauses it took, each of a tenth of a second.
  std::size_t append(TextView path, TextView data, std::int16_t binaryMode) {
    events.waits.clear();
    toolkit.file().AppendToFile(path, data, binaryMode);
    for (const double wait : events.waits) EXPECT_EQ(wait, 0.1);
    return events.waits.size();
  }
};

TEST_F(ToolkitTest, KnowsYesInBothLanguagesAndTakesTheRestForNo) {
  for (const TextView yes :
       {u"Da", u"yEs", u"1", u"true", u"-1", u"On", u"vklop", u"VKLOPLJEN", u"vklopljeno"}) {
    EXPECT_TRUE(clsZantorBas::GetTF(yes)) << testing::PrintToString(yes);
  }
  for (const TextView no : {u"NE", u"0", u"off", u"", u" yes", u"yes ", u"2"}) {
    EXPECT_FALSE(clsZantorBas::GetTF(no)) << testing::PrintToString(no);
  }
}

TEST_F(ToolkitTest, WritesBinaryDigitsInGroupsOfEight) {
  const auto dec2bin = clsZantorBas::dec2bin;
  EXPECT_EQ(dec2bin(0, false), u"0");
  EXPECT_EQ(dec2bin(5.50004, false), u"110");
  EXPECT_EQ(dec2bin(4.50004, true), u"00000100");
  EXPECT_EQ(dec2bin(2147483647.4999, true), u"01111111111111111111111111111111");
  EXPECT_EQ(dec2bin(-5, true), u"000-10-1");
  for (const double bad : {2147483647.5, -2147483648.5001, 1e300, kNan}) {
    EXPECT_THROW(dec2bin(bad, true), std::overflow_error) << bad;
  }
}

TEST_F(ToolkitTest, MakesTextsThatDifferByChanceAndByTime) {
  const Text first = toolkit.bas().uniqueText(30);
  EXPECT_EQ(first.size(), 30U);
  machine.clock.advance(0.001);
  const Text later = toolkit.bas().uniqueText(30);
  EXPECT_NE(later, first);
  machine.random.afterwards = 1 - 0x1p-53;
  EXPECT_NE(toolkit.bas().uniqueText(30), later);
}

TEST_F(ToolkitTest, DelaysForTheWholeTimeWhateverTheClockDoes) {
  for (const double none : {0.0, -1.0, kNan}) toolkit.bas().DelayEvents(none);
  EXPECT_EQ(events.processed, 3) << "events are delivered at least once";
  EXPECT_TRUE(events.waits.empty());
  machine.clock.seconds = 86399.96;
  toolkit.bas().DelayEvents(0.1);
  EXPECT_NEAR(machine.clock.seconds, 0.06, 1e-6);
  // It is set back once, then it stands still but for every tenth look.
  machine.clock.seconds = 40000;
  events.longestWait = 0;
  events.processed = 0;
  events.onEvents = [this] {
    if (events.processed == 5) machine.clock.seconds -= 7200;
    if (events.processed % 10 == 0) machine.clock.advance(0.0625);
  };
  toolkit.bas().DelayEvents(0.1);
  EXPECT_EQ(events.processed, 20);
}

TEST_F(ToolkitTest, AppendsLinesAndBytes) {
  const Text file = folder.text() + u"\u017Eiga.txt";
  for (const TextView line : {u"first", u"", u"a\nb"}) EXPECT_EQ(append(file, line, 0), 0U);
  append(file, u"\u20AC\u017E", -1);
  append(file, TextView(u"\0\n\u4E2D", 3), 1);
  EXPECT_EQ(folder.contents(u"\u017Eiga.txt"), std::string("first\r\n\r\na\nb\r\n\x80\x9E\0\n?", 19));
}

TEST_F(ToolkitTest, AppendsOnceTheFileCanBeOpenedAndGivesUpAfterFiveFailures) {
  // Each failing step costs a pause: the opening all five, every step after it one more.
  const Text late = folder.text() + u"late/lines.txt";
  EXPECT_EQ(append(late, u"lost", 0), 6U);
  EXPECT_EQ(append(late, u"lost", 1), 7U);
  events.onEvents = [this] {
    if (events.waits.size() == 4) std::filesystem::create_directory(folder.path() / "late");
  };
  EXPECT_EQ(append(late, u"saved", 0), 4U);
  EXPECT_EQ(folder.contents(u"late/lines.txt"), "saved\r\n");
}

}  // namespace
}  // namespace fiar
