#include "sim/telephone_exchange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <sstream>

namespace brantel::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr auto kLine = TelephoneExchange::kLine;
constexpr auto kCall = TelephoneExchange::kCall;

class TelephoneExchangeTest : public ::testing::Test {
 protected:
  TelephoneExchange& Use(const std::string& script) {
    return exchange_.emplace(ParseExchangeScript(script), timeline_, transcript_,
                             [this](const ExchangeMessage& message) {
                               std::ostringstream text;
                               text << timeline_.now().count() << ": " << message.kind << ' '
                                    << message.first << ' ' << message.second;
                               told_.push_back(text.str());
                             });
  }

  TelephoneExchange& UseOpen(const std::string& script) {
    TelephoneExchange& exchange = Use(script);
    EXPECT_EQ(exchange.Open(0, 8, 4), 0U);
    return exchange;
  }

  Timeline timeline_;
  std::ostringstream stream_;
  Transcript transcript_{stream_, timeline_};
  std::vector<std::string> told_;
  std::optional<TelephoneExchange> exchange_;
  std::uint32_t call_ = 0;
};

TEST_F(TelephoneExchangeTest, CountsItsLinesAndNegotiates) {
  TelephoneExchange& exchange =
      Use("line version 0x00010004\nline negotiation-error 0x80000044\nline version 0x00060000");
  std::uint32_t count = 0;
  EXPECT_EQ(exchange.Initialize(count), 0U);
  EXPECT_EQ(count, 3U);
  std::uint32_t version = 7;
  EXPECT_EQ(exchange.Negotiate(0, 0x00010000, 0x00050000, version), 0U);
  EXPECT_EQ(version, 0x00010004U);
  EXPECT_EQ(exchange.Negotiate(1, 0x00010000, 0x00050000, version), 0x80000044U);
  EXPECT_EQ(exchange.Negotiate(2, 0x00010000, 0x00050000, version), 0x8000000CU);
  EXPECT_EQ(exchange.Negotiate(3, 0x00010000, 0x00050000, version), 0x80000002U);
}

TEST_F(TelephoneExchangeTest, OpensLinesForWhatTheyTake) {
  TelephoneExchange& exchange = Use("line media-modes 4\nline media-modes 0xC");
  EXPECT_EQ(exchange.Open(0, 8, 4), 0x8000002FU);
  EXPECT_EQ(exchange.Open(1, 8, 4), 0U);
  EXPECT_EQ(exchange.Open(2, 8, 4), 0x80000002U);
  EXPECT_EQ(Use("no-lines").Open(0, 8, 4), 0U);
}

TEST_F(TelephoneExchangeTest, RepliesToTheCallAndTellsWhatBecomesOfIt) {
  TelephoneExchange& exchange = UseOpen("at 1 call-state ringback\nat 2 call-state connected");
  EXPECT_EQ(exchange.MakeCall(kLine, "5550100", call_, Time(0)), 1U);
  EXPECT_EQ(call_, 0U);
  timeline_.AdvanceTo(Time(1500));
  EXPECT_EQ(call_, kCall);
  EXPECT_THAT(told_, ElementsAre("0: 12 1 0", "1000: 2 32 0"));
  timeline_.AdvanceTo(Time(3000));
  EXPECT_EQ(told_.back(), "2000: 2 256 0");
}

TEST_F(TelephoneExchangeTest, PlansBehindTheTimeOfDay) {
  TelephoneExchange& exchange = UseOpen("at 1 call-state connected");
  exchange.MakeCall(kLine, "5550100", call_, Time(400));
  timeline_.AdvanceTo(Time(3000));
  EXPECT_THAT(told_, ElementsAre("400: 12 1 0", "1400: 2 256 0"));
}

TEST_F(TelephoneExchangeTest, TellsOfKeysWhereTheyAreListenedFor) {
  TelephoneExchange& exchange = UseOpen("at 1 digit 1\nat 2 digit 2\nat 3 digit 3");
  exchange.MakeCall(kLine, "5550100", call_, Time(0));
  timeline_.AdvanceTo(Time(1000));
  EXPECT_EQ(exchange.MonitorDigits(call_, 2), 0U);
  timeline_.AdvanceTo(Time(2000));
  EXPECT_EQ(exchange.MonitorDigits(call_, 0), 0U);
  timeline_.AdvanceTo(Time(3000));
  EXPECT_THAT(told_, ElementsAre("0: 12 1 0", "2000: 9 50 2"));
  EXPECT_THAT(stream_.str(), HasSubstr("presses 1, which nobody hears\n"));
  EXPECT_THAT(stream_.str(), HasSubstr("presses 2\n"));
}

TEST_F(TelephoneExchangeTest, TellsNothingMoreWhenTheLineIsClosed) {
  TelephoneExchange& exchange = UseOpen("at 1 call-state connected");
  exchange.MakeCall(kLine, "5550100", call_, Time(0));
  timeline_.AdvanceTo(Time(500));
  EXPECT_EQ(exchange.Close(kLine), 0U);
  timeline_.AdvanceTo(Time(5000));
  EXPECT_THAT(told_, ElementsAre("0: 12 1 0"));
  EXPECT_EQ(exchange.Close(kLine), 0x8000002BU);
  EXPECT_EQ(exchange.MakeCall(kLine, "5550100", call_, Time(0)), 0x8000002BU);
}

TEST_F(TelephoneExchangeTest, FailsAsOftenAsTheScriptSays) {
  TelephoneExchange& exchange =
      Use("fails lineInitialize 0x80000052\nfails lineShutdown 0x80000048 2");
  std::uint32_t count = 0;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(exchange.Initialize(count), 0x80000052U);
  }
  EXPECT_EQ(exchange.Shutdown(TelephoneExchange::kApplication), 0x80000048U);
  EXPECT_EQ(exchange.Shutdown(TelephoneExchange::kApplication), 0x80000048U);
  EXPECT_EQ(exchange.Shutdown(TelephoneExchange::kApplication), 0U);
  EXPECT_THAT(stream_.str(), HasSubstr("lineInitialize fails with 0x80000052"));
}

TEST_F(TelephoneExchangeTest, TellsItsEventsAlsoBehindACallThatFailed) {
  TelephoneExchange& exchange = UseOpen("fails lineMakeCall 0x80000005\nat 1 call-state connected");
  EXPECT_EQ(exchange.MakeCall(kLine, "5550100", call_, Time(0)), 0x80000005U);
  timeline_.AdvanceTo(Time(2000));
  EXPECT_THAT(told_, ElementsAre("1000: 2 256 0"));
  EXPECT_EQ(call_, 0U);
}

TEST_F(TelephoneExchangeTest, KnowsNoWaveDeviceButThatOfItsLineAndCall) {
  TelephoneExchange& exchange = UseOpen("");
  EXPECT_EQ(exchange.GetWaveDevice(kLine, 0, 1, "wave/out"), 0U);
  EXPECT_EQ(exchange.GetWaveDevice(kLine, 0, 4, "wave/out"), 0x80000018U);
  EXPECT_EQ(exchange.GetWaveDevice(kLine, 0, 1, "wave/in"), 0x80000023U);
  EXPECT_EQ(exchange.GetWaveDevice(kLine + 1, 0, 1, "wave/out"), 0x8000002BU);
  exchange.MakeCall(kLine, "5550100", call_, Time(0));
  timeline_.AdvanceTo(Time(1));
  EXPECT_EQ(exchange.GetWaveDevice(kLine, call_, 4, "wave/out"), 0U);
}

TEST_F(TelephoneExchangeTest, RefusesHandlesThatItHasNotGiven) {
  TelephoneExchange& exchange = Use("");
  EXPECT_EQ(exchange.MonitorDigits(kCall, 2), 0x80000018U);
  EXPECT_EQ(exchange.Shutdown(7), 0x80000014U);
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(stream_.str(), Not(HasSubstr("fails")));
}

}  // namespace
}  // namespace brantel::sim
