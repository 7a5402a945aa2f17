#include "port/modem_port.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "beeper/beeper_port.h"
#include "pager/pager_port.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/port/fake_modem.h"
#include "tests/unit/system/virtual_clock.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct BaudCase {
  std::int32_t selector;
  std::uint32_t beeper_rate;
  std::uint32_t pager_rate;
};

void PrintTo(const BaudCase& baud_case, std::ostream* stream) {
  *stream << baud_case.selector;
}

class BaudSelectorTest : public ::testing::TestWithParam<BaudCase> {
 protected:
  static std::uint32_t RateSet(const ModemPolicy& policy, std::int32_t selector) {
    FakeModem modem;
    PortBusyFlag busy = 0;
    VirtualClock clock;
    FakeNotifierHost host;
    ModemPort port(policy, busy, modem, clock, host);
    EXPECT_TRUE(port.OpenPort(1, selector, kBeeperFraming));
    return modem.rates.at(0);
  }
};

TEST_P(BaudSelectorTest, GivesEachNotifiersRate) {
  EXPECT_EQ(RateSet(kBeeperPolicy, GetParam().selector), GetParam().beeper_rate);
  EXPECT_EQ(RateSet(kPagerPolicy, GetParam().selector), GetParam().pager_rate);
}

INSTANTIATE_TEST_SUITE_P(
    Selectors, BaudSelectorTest,
    ::testing::Values(BaudCase{0, 300, 300}, BaudCase{1, 1200, 1200}, BaudCase{2, 2400, 2400},
                      BaudCase{3, 4800, 4800}, BaudCase{4, 9600, 9600}, BaudCase{5, 14400, 14400},
                      BaudCase{6, 19200, 19200}, BaudCase{7, 38400, 38400},
                      BaudCase{8, 57600, 57600}, BaudCase{9, 115200, 115200},
                      BaudCase{10, 1200, 300}, BaudCase{150, 1200, 300}, BaudCase{299, 1200, 300},
                      BaudCase{300, 300, 300}, BaudCase{301, 301, 301}, BaudCase{2400, 2400, 2400},
                      BaudCase{230400, 230400, 230400}, BaudCase{-1, 1200, 300},
                      BaudCase{std::numeric_limits<std::int32_t>::min(), 1200, 300},
                      BaudCase{std::numeric_limits<std::int32_t>::max(), 2147483647, 2147483647}));

class ModemPortTest : public ::testing::Test {
 protected:
  FakeModem modem_;
  PortBusyFlag busy_ = 0;
  VirtualClock clock_;
  FakeNotifierHost host_;
  ModemPort port_{kPagerPolicy, busy_, modem_, clock_, host_};
};

TEST_F(ModemPortTest, HoldsTheFlagWithItsNotifiersMarkUntilItIsClosed) {
  ASSERT_TRUE(port_.OpenPort(1, 4, kPagerFraming8N1));
  EXPECT_EQ(busy_, 2U);
  EXPECT_THAT(modem_.open_ports, ElementsAre(1U));
  port_.ClosePort();
  EXPECT_EQ(busy_, 0U);
  EXPECT_THAT(modem_.open_ports, IsEmpty());

  FakeModem modem;
  ModemPort beeper_port(kBeeperPolicy, busy_, modem, clock_, host_);
  ASSERT_TRUE(beeper_port.OpenPort(1, 4, kBeeperFraming));
  EXPECT_EQ(busy_, 1U);
}

TEST_F(ModemPortTest, DoesNotFreeAFlagThatItHasNotClaimed) {
  busy_ = 1;
  ASSERT_FALSE(port_.OpenPort(1, 4, kPagerFraming8N1));
  port_.ClosePort();
  EXPECT_EQ(busy_, 1U);
  EXPECT_EQ(clock_.waits, std::vector<std::uint32_t>(20, 1000U));
}

TEST_F(ModemPortTest, FindsAPortThatAnotherObjectHoldsUnavailableAtOnce) {
  ASSERT_TRUE(port_.OpenPort(1, 4, kPagerFraming8N1));
  PortBusyFlag other_flag = 0;
  ModemPort other(kBeeperPolicy, other_flag, modem_, clock_, host_);
  EXPECT_FALSE(other.OpenPort(1, 4, kBeeperFraming));
  EXPECT_THAT(host_.log, ElementsAre("open error 5\r\n"));
  EXPECT_THAT(clock_.waits, IsEmpty());
  EXPECT_EQ(other_flag, 0U);
  EXPECT_TRUE(other.OpenPort(2, 4, kBeeperFraming));
}

TEST_F(ModemPortTest, TakesAPortSettingWithoutANumberForAPortThatDoesNotExist) {
  EXPECT_FALSE(port_.OpenPort(std::nullopt, 4, kPagerFraming8N1));
  EXPECT_THAT(host_.log, ElementsAre("open error 2\r\n"));
  EXPECT_EQ(busy_, 0U);
}

TEST_F(ModemPortTest, ReadsUpToANulAndNeverBeyondWhatCame) {
  ASSERT_TRUE(port_.OpenPort(1, 4, kPagerFraming8N1));
  modem_.answer_to = [](const std::string&) { return std::string(200, 'x'); };
  EXPECT_TRUE(port_.ReadLogged());
  EXPECT_EQ(port_.response(), std::string(100, 'x'));

  modem_.answer_to = [](const std::string&) { return std::string("a\0b", 3); };
  EXPECT_TRUE(port_.ReadLogged());
  EXPECT_EQ(port_.response(), "a");
}

TEST_F(ModemPortTest, KeepsTheLastResponseWhenACommandCannotBeWritten) {
  ASSERT_TRUE(port_.OpenPort(1, 4, kPagerFraming8N1));
  modem_.answer_to = [](const std::string&) { return std::string("before"); };
  EXPECT_TRUE(port_.ReadLogged());
  modem_.fault_at = [](std::size_t) { return FakeModem::Fault{Failure{5}, ""}; };
  EXPECT_FALSE(port_.SendCommand("AT\r"));
  EXPECT_EQ(port_.response(), "before");
  EXPECT_FALSE(port_.ReadLogged());
  EXPECT_EQ(port_.response(), "");
}

}  // namespace
}  // namespace brantel
