#include "beeper/beeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beeper/beeper_description.h"
#include "tests/unit/port/modem_notifier_fixture.h"

namespace brantel {
namespace {

using namespace std::string_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BeeperTest : public ModemNotifierFixture {
 protected:
  BeeperTest() : ModemNotifierFixture(kBeeper, 2, {{kOk, ""}}) {
    instance_.set_text(beeper_field::kBeeperNumber, "5551234");
    instance_.set_text(beeper_field::kUpCode, "1");
    instance_.set_text(beeper_field::kDownCode, "2");
    instance_.set_text(beeper_field::kTrapCode, "3");
  }

  std::unique_ptr<Notifier> Make() override {
    return std::make_unique<Beeper>(files_, settings_, modem_, clock_);
  }
};

TEST_F(BeeperTest, ReadsItsSettingsInTheirOrder) {
  instance_.set_integer(beeper_field::kSettingsProfile, 7);
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(settings_.calls,
              ElementsAre(R"(open SOFTWARE\Brantel\Vantrel\notification\Beeper\07)",
                          "read Settings_COMPort", "read Settings_Baud", "read Settings_DialString",
                          "read Settings_ModemString", "read Settings_Timeout"));
}

TEST_F(BeeperTest, UsesTheDefaultsWhenTheSettingsCannotBeOpened) {
  settings_.opens = false;
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.written, ElementsAre("ATE0Q0V1X4\r", "ATDT5551234,,,,2#\r", "+++", "ATH0\r"));
}

TEST_F(BeeperTest, ReadsInstanceAndSettingsAnewForEachAlert) {
  ASSERT_EQ(Send(), kOk);
  instance_.set_text(beeper_field::kBeeperNumber, "5559999");
  Set("Settings_DialString", "ATDP%s,%s");
  Set("Settings_Baud", "9600");
  host_.expansions = {{kOk, ""}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.written, Contains("ATDP5559999,2\r"));
  EXPECT_THAT(modem_.rates, ElementsAre(300U, 9600U));
}

TEST_F(BeeperTest, ReadsASettingThatIsStoredAsANumber) {
  settings_.keys[R"(SOFTWARE\Brantel\Vantrel\notification\Beeper)"]["Settings_Baud"] = {
      SettingType::kNumber, "\5\0\0\0"s};
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.rates, ElementsAre(14400U));
}

TEST_F(BeeperTest, CutsTheCompleteMessageToItsBuffer) {
  Set("Settings_DialString", "%s");
  host_.expansions = {{kOk, std::string(2000, '7')}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(host_.log, Contains("2" + std::string(1022, '7')));
}

TEST_F(BeeperTest, CutsTheDialCommandToItsBufferAndEndsItAllTheSame) {
  host_.expansions = {{kOk, std::string(1100, '7')}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,2" + std::string(1007, '7') + "\r");
  EXPECT_EQ(modem_.written.at(1).size(), 1024U);
}

TEST_F(BeeperTest, EndsTheHostsTextAtANul) {
  host_.expansions = {{kOk, "77\0 88"s}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,277#\r");
}

// Each byte but NUL, which ends a text, and "%", which begins a directive. A modem looks at seven
// bits of each: 0x8D, which half of a Japanese character can be, is a carriage return to it.
TEST_F(BeeperTest, KeepsControlCharactersOfTheHostsTextFromTheModem) {
  for (int byte = 0x01; byte <= 0xFF; ++byte) {
    if (byte == '%') continue;
    const std::string text(1, static_cast<char>(byte));
    const bool is_control = byte % 0x80 < 0x20 || byte % 0x80 == 0x7F;
    modem_.written.clear();
    host_.expansions = {{kOk, "7" + text + "8"}};
    ASSERT_EQ(Send(), kOk);
    EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,27" + (is_control ? "" : text) + "8#\r");
    EXPECT_THAT(host_.log, Contains("27" + text + "8"));
  }
}

TEST_F(BeeperTest, SendsAnAbsentCodeAsNothing) {
  instance_.set_text(beeper_field::kDownCode, "");
  host_.expansions = {{kOk, "55"}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,55#\r");
}

TEST_F(BeeperTest, FailsWithoutAHostAndTouchesNothing) {
  ExpectFailureWithoutAHost();
}

TEST_F(BeeperTest, LetsASecondAlertOfTheSameObjectWaitAndThenFail) {
  FakeNotifierHost inner_host;
  inner_host.trigger_word = 1;
  EXPECT_EQ(SendInside("Delaying\r\n", *notifier_, inner_host), kFail);
  ASSERT_EQ(inner_host.log.size(), 30U);
  EXPECT_EQ(inner_host.log.at(10), "port in use, delaying 19\r\n");
  EXPECT_EQ(inner_host.log.back(), "port in use, delaying 0\r\n");
  EXPECT_THAT(modem_.open_ports, IsEmpty());
  EXPECT_EQ(Send(), kOk);
}

TEST_F(BeeperTest, LetsASecondObjectOnTheSamePortFailAtOnce) {
  FakeNotifierHost inner_host;
  inner_host.trigger_word = 1;
  const auto second = Make();
  EXPECT_EQ(SendInside("Delaying\r\n", *second, inner_host), kFail);
  EXPECT_EQ(inner_host.log.back(), "open error 5\r\n");
  EXPECT_EQ(SendOn(*second, inner_host), kOk);
}

TEST_F(BeeperTest, MakesTheCallWhicheverLineOfTheLogFindsNoMemory) {
  ExpectDeliveryWithoutMemoryForALine(22);
}

TEST_F(BeeperTest, MakesTheCallWhateverIsAllocatedForTheLogFindsNoMemory) {
  ExpectOneLineLost(
      SendWithoutMemoryForTheLog(kOk, {"ATE0Q0V1X4\r", "ATDT5551234,,,,2#\r", "+++", "ATH0\r"}),
      22);
}

// Sessions with a modem that says OK at once, and with one that says it to the plain AT alone.
constexpr std::string_view kPlain = "plain,";
constexpr std::string_view kLateOk = "late OK,";

class BeeperFaultTest : public BeeperTest, public ::testing::WithParamInterface<FaultCase> {};

TEST_P(BeeperFaultTest, ClosesThePortAndTellsTheTruth) {
  if (GetParam().session == kLateOk) {
    modem_.answer_to = [](const std::string& last) {
      return last == "ATE0Q0V1X4\r" ? "" : "\r\nOK\r\n";
    };
  }
  host_.expansions.clear();
  ExpectTruthAtEachTransfer(GetParam());
}

// Write and read of the initialisation; write of the dial command; the read of nothing; writes of
// the hang-up and its read.
// The longer session has a late read, and write and read of the plain AT, after the first two.
INSTANTIATE_TEST_SUITE_P(
    Faults, BeeperFaultTest,
    ::testing::Values(FaultCase{"fails once", kPlain, kBroken, false, "SSFSSSS"},
                      FaultCase{"fails for good", kPlain, kBroken, true, "FFFSSSS"},
                      FaultCase{"silent once", kPlain, kSilent, false, "SSSSSSS"},
                      FaultCase{"silent for good", kPlain, kSilent, true, "FFSSSSS"},
                      FaultCase{"rubbish once", kPlain, kRubbish, false, "SSSSSSS"},
                      FaultCase{"rubbish for good", kPlain, kRubbish, true, "FFSSSSS"},
                      FaultCase{"100 bytes once", kPlain, kFull, false, "SSSSSSS"},
                      FaultCase{"100 bytes for good", kPlain, kFull, true, "FFSSSSS"},
                      FaultCase{"fails once", kLateOk, kBroken, false, "SSFFFFSSSS"},
                      FaultCase{"fails for good", kLateOk, kBroken, true, "FFFFFFSSSS"},
                      FaultCase{"silent once", kLateOk, kSilent, false, "SSSSFSSSSS"},
                      FaultCase{"silent for good", kLateOk, kSilent, true, "FFFFFSSSSS"},
                      FaultCase{"rubbish once", kLateOk, kRubbish, false, "SSSSFSSSSS"},
                      FaultCase{"rubbish for good", kLateOk, kRubbish, true, "FFFFFSSSSS"},
                      FaultCase{"100 bytes once", kLateOk, kFull, false, "SSSSFSSSSS"},
                      FaultCase{"100 bytes for good", kLateOk, kFull, true, "FFFFFSSSSS"}));

}  // namespace
}  // namespace brantel
