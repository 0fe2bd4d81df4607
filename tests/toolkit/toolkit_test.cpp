#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "support/loaded_toolkit.h"
#include "support/temporary_folder.h"
#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorFile.h"

namespace fiar {
namespace {

TEST(Toolkit, ReleasesItsInstancesInOrderAndNothingElse) {
  test::FakePlatform machine;
  std::string released;
  {
    Toolkit toolkit(machine.platform);
    const auto hold = [&](ToolkitClass which, char letter) {
      toolkit.setInstance(
          which, std::shared_ptr<void>(&released, [&released, letter](void*) { released += letter; }));
    };
    EXPECT_EQ(&toolkit.xml(), &toolkit.xml());
    using enum ToolkitClass;
    char letter = '1';
    for (const ToolkitClass which : {Bas, Api, Mail, File, Web, Xml, CodeCod, Math}) hold(which, letter++);
    toolkit.variables().setVar(u"name", u"kept");
    toolkit.releaseToolkit();
    EXPECT_EQ(released, "12345678");
    EXPECT_EQ(toolkit.variables().getVar(u"name"), u"kept");
    EXPECT_FALSE(toolkit.bas().IsRunningInIde());
    hold(Web, 'e');
  }
  EXPECT_EQ(released, "12345678e");
}

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(GetTF, KnowsYesInBothLanguagesAndTakesTheRestForNo) {
  for (const TextView yes :
       {u"DA", u"da", u"yEs", u"1", u"true", u"-1", u"On", u"vklop", u"VKLOPLJEN", u"vklopljeno"}) {
    EXPECT_TRUE(clsZantorBas::GetTF(yes)) << testing::PrintToString(yes);
  }
  for (const TextView no :
       {u"NE", u"no", u"0", u"false", u"off", u"izklop", u"", u" yes", u"yes ", u"2", u"+1"})
    EXPECT_FALSE(clsZantorBas::GetTF(no)) << testing::PrintToString(no);
}

TEST(Dec2bin, WritesBinaryDigitsInGroupsOfEight) {
  const struct {
    double value;
    TextView plain;
    TextView padded;
  } cases[] = {{0, u"0", u"00000000"},
               {4.5, u"100", u"00000100"},
               {5.5, u"110", u"00000110"},
               {0.5001, u"1", u"00000001"},
               {300, u"100101100", u"0000000100101100"},
               {2147483647.4999, u"1111111111111111111111111111111", u"01111111111111111111111111111111"},
               {-5, u"-10-1", u"000-10-1"}};
  for (const auto& [value, plain, padded] : cases) {
    EXPECT_EQ(clsZantorBas::dec2bin(value, false), plain) << value;
    EXPECT_EQ(clsZantorBas::dec2bin(value, true), padded) << value;
  }
  for (const double bad : {2147483647.5, -2147483648.5001, 1e300, kNan})
    EXPECT_THROW(clsZantorBas::dec2bin(bad, true), std::overflow_error) << bad;
}

struct DelayEvents : testing::Test, test::FakeToolkit {
  test::FakeEvents& events = machine.events;
};

TEST_F(DelayEvents, DeliversEventsOnceWhereThereIsNothingToWaitFor) {
  for (const double none : {0.0, -1.0, kNan}) toolkit.bas().DelayEvents(none);
  EXPECT_EQ(events.processed, 3);
  EXPECT_TRUE(events.waits.empty());
}

TEST_F(DelayEvents, WaitsTheWholeTimeThroughEventsAndMidnight) {
  machine.clock.seconds = 40000;
  toolkit.bas().DelayEvents(50000);
  EXPECT_NEAR(machine.clock.seconds, 3600, 1e-6);
  EXPECT_EQ(events.waits.size(), 14U);
  machine.clock.seconds = 86399.96;
  events.longestWait = 0.015625;
  toolkit.bas().DelayEvents(0.1);
  EXPECT_NEAR(machine.clock.seconds, 0.06, 0.016);
  EXPECT_EQ(events.waits.size(), 14U + 7U);
}

// A clock may be set back, and a coarse one stands still while events come.
TEST_F(DelayEvents, SurvivesAClockThatIsSetBackOrStandsStill) {
  events.onEvents = [this] {
    if (events.waits.size() == 1) machine.clock.seconds -= 7200;
  };
  toolkit.bas().DelayEvents(0.1);
  EXPECT_EQ(events.waits.size(), 2U);
  events.longestWait = 0;
  events.processed = 0;
  events.onEvents = [this] {
    if (events.processed % 10 == 0) machine.clock.advance(0.0625);
  };
  toolkit.bas().DelayEvents(0.1);
  EXPECT_EQ(events.processed, 20);
}

constexpr std::int16_t kTextMode = 0;
constexpr std::int16_t kBinaryMode = -1;

struct AppendToFile : testing::Test, test::FakeToolkit {
  /// Gives how many pauses it took, each of a tenth of a second.
  std::size_t append(TextView path, TextView data, std::int16_t mode) {
    machine.events.waits.clear();
    toolkit.file().AppendToFile(path, data, mode);
    for (const double wait : machine.events.waits) EXPECT_EQ(wait, 0.1);
    return machine.events.waits.size();
  }

  test::TemporaryFolder folder;
};

TEST_F(AppendToFile, EndsTextsWithALineEndAndJoinsBinaryOnesOneByteACharacter) {
  using namespace std::string_literals;
  const Text lines = folder.text() + u"\u017Eiga.txt";
  for (const TextView line : {u"first", u"", u"a\nb"}) EXPECT_EQ(append(lines, line, kTextMode), 0U);
  append(lines, u"\u20AC\u017E", kBinaryMode);
  append(lines, TextView(u"\0\n\u4E2D", 3), 1);
  EXPECT_EQ(folder.contents(u"\u017Eiga.txt"), "first\r\n\r\na\nb\r\n\x80\x9E\0\n?"s);
}

// Each failing step costs a pause: the opening all five, every step after it one more.
TEST_F(AppendToFile, GivesUpAfterFiveFailures) {
  const Text missing = folder.text() + u"missing\\file";
  EXPECT_EQ(append(missing, u"lost", kTextMode), 6U);
  EXPECT_EQ(append(missing, u"lost", kBinaryMode), 7U);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
  // A disk that is full, where there is one.
  if (std::filesystem::exists("/dev/full")) {
    EXPECT_EQ(append(u"/dev/full", u"lost", kTextMode), 5U);
  }
}

TEST_F(AppendToFile, WritesOnceTheFileCanBeOpened) {
  machine.events.onEvents = [this] {
    if (machine.events.waits.size() == 4) std::filesystem::create_directory(folder.path() / "late");
  };
  EXPECT_EQ(append(folder.text() + u"late\\lines.txt", u"saved", kTextMode), 4U);
  EXPECT_EQ(folder.contents(u"late/lines.txt"), "saved\r\n");
}

}  // namespace
}  // namespace fiar
