#include "toolkit/clsZantorBas.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "support/fake_platform.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

TEST(GetTF, KnowsYesInBothLanguagesAndTakesTheRestForNo) {
  for (const TextView yes :
       {u"DA", u"da", u"yEs", u"1", u"true", u"-1", u"On", u"vklop", u"VKLOPLJEN", u"vklopljeno"}) {
    EXPECT_TRUE(clsZantorBas::GetTF(yes)) << toUtf8(yes);
  }
  for (const TextView no : {u"NE", u"no", u"0", u"False", u"off", u"IZKLOP", u"izklopljen", u"Izklopljeno",
                            u"", u" yes", u"yes ", u"2", u"+1", u"d\u00E5", u"ye\u017F", u"Y"}) {
    EXPECT_FALSE(clsZantorBas::GetTF(no)) << toUtf8(no);
  }
  EXPECT_FALSE(clsZantorBas::GetTF(TextView(u"yes\0", 4)));
}

TEST(Dec2bin, WritesBinaryDigitsInGroupsOfEight) {
  struct Case {
    double value;
    TextView plain;
    TextView padded;
  };
  for (const Case& c :
       {Case{0, u"0", u"00000000"}, Case{1, u"1", u"00000001"}, Case{5, u"101", u"00000101"},
        Case{4.5, u"100", u"00000100"}, Case{5.5, u"110", u"00000110"}, Case{0.5001, u"1", u"00000001"},
        Case{255, u"11111111", u"11111111"}, Case{256, u"100000000", u"0000000100000000"},
        Case{300, u"100101100", u"0000000100101100"},
        Case{65536, u"10000000000000000", u"000000010000000000000000"},
        Case{2147483647.4999, u"1111111111111111111111111111111", u"01111111111111111111111111111111"},
        Case{-5, u"-10-1", u"000-10-1"}}) {
    EXPECT_EQ(clsZantorBas::dec2bin(c.value, false), c.plain) << c.value;
    EXPECT_EQ(clsZantorBas::dec2bin(c.value, true), c.padded) << c.value;
  }
  for (const double bad : {2147483647.5, -2147483648.5001, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(clsZantorBas::dec2bin(bad, true), std::overflow_error) << bad;
  }
}

class DelayEvents : public testing::Test {
protected:
  test::FakePlatform machine;
  Toolkit toolkit{machine.platform};
  clsZantorBas& bas = toolkit.bas();
};

TEST_F(DelayEvents, DeliversEventsOnceWhereThereIsNothingToWaitFor) {
  for (const double none : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    machine.events.processed = 0;
    bas.DelayEvents(none);
    EXPECT_EQ(machine.events.processed, 1) << none;
  }
  EXPECT_TRUE(machine.events.waits.empty());
}

TEST_F(DelayEvents, WaitsTheWholeTimeThroughEventsAndMidnight) {
  machine.clock.seconds = 86399.96;
  machine.events.longestWait = 0.015625;
  bas.DelayEvents(0.1);
  EXPECT_NEAR(machine.clock.seconds, 0.06, 0.016);
  EXPECT_EQ(machine.events.waits.size(), 7U);
}

TEST_F(DelayEvents, WaitsLongerThanHalfADay) {
  machine.clock.seconds = 40000;
  bas.DelayEvents(50000);
  EXPECT_NEAR(machine.clock.seconds, 3600, 1e-6);
}

// A clock may be set back, and a coarse one stands still while events come.
TEST_F(DelayEvents, SurvivesAClockThatIsSetBackOrStandsStill) {
  machine.events.onEvents = [this] {
    if (machine.events.waits.size() == 1) machine.clock.seconds -= 7200;
  };
  bas.DelayEvents(0.1);
  EXPECT_EQ(machine.events.waits.size(), 2U);
  machine.events.longestWait = 0;
  machine.events.processed = 0;
  machine.events.onEvents = [this] {
    if (machine.events.processed % 10 == 0) machine.clock.advance(0.0625);
  };
  bas.DelayEvents(0.1);
  EXPECT_EQ(machine.events.processed, 20);
}

}  // namespace
}  // namespace fiar
