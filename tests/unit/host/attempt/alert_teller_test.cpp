#include "host/attempt/alert_teller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

using std::chrono::milliseconds;

constexpr AttemptOutcome kDeliveredOutcome = {
    .end = AttemptEnd::kReturned, .result = 0, .fault = {}};
constexpr AttemptOutcome kFailedOutcome = {
    .end = AttemptEnd::kReturned, .result = static_cast<std::int32_t>(0x80004005), .fault = {}};

class AlertTellerTest : public testing::Test {
 protected:
  void Begin(std::string_view class_name, bool has_times = false,
             ReportForm form = ReportForm::kText) {
    report_.emplace(kept_, form, false);
    teller_.emplace(*report_, AlertCourse(class_name, std::nullopt), LogSecrets({"secret"}),
                    has_times);
  }

  void End(const AttemptOutcome& outcome, milliseconds elapsed) {
    teller_->TellEnd(teller_->Summarise(outcome, elapsed));
  }

  KeptText kept_;
  std::optional<ReportWriter> report_;
  std::optional<AlertTeller> teller_;
};

TEST_F(AlertTellerTest, PrintsTheLogAsItComes) {
  Begin("LaunchProgram");
  teller_->TellLog("one\r\ntw", milliseconds(0));
  EXPECT_EQ(kept_.text(), "one\ntw");
  teller_->TellLog("o\x1B\r\n", milliseconds(10));
  EXPECT_EQ(kept_.text(), "one\ntwo<1B>\n");
}

TEST_F(AlertTellerTest, EndsWithTheVerdictOnALineOfItsOwn) {
  Begin("LaunchProgram");
  teller_->TellLog("open", milliseconds(0));
  End(kDeliveredOutcome, milliseconds(71'260));
  EXPECT_EQ(kept_.text(), "open\nThe program was started; nobody waits for what it does; 71.3 s\n");
}

TEST_F(AlertTellerTest, NamesAResultThatIsNotPlainSuccess) {
  Begin("LaunchProgram");
  End(kFailedOutcome, milliseconds(40));
  EXPECT_TRUE(kept_.text().starts_with("Not delivered"));
  EXPECT_TRUE(kept_.text().ends_with("; 0.0 s; 0x80004005 (E_FAIL)\n"));
}

TEST_F(AlertTellerTest, SaysWhenThereIsNoResult) {
  Begin("LaunchProgram");
  End({.end = AttemptEnd::kTimedOut}, milliseconds(2000));
  EXPECT_TRUE(kept_.text().starts_with("No result: "));
  EXPECT_TRUE(kept_.text().ends_with("; 2.0 s\n"));
}

TEST_F(AlertTellerTest, TellsPhasesBehindTheLineThatBeginsThem) {
  Begin("Beeper");
  teller_->TellLog("SendBeeperMessage:\r\nBeep Number:", milliseconds(100));
  teller_->TellLog("5550100\r\n", milliseconds(200));
  teller_->TellLog("Complete Message:\r\n222", milliseconds(300));
  teller_->TellLog("\r\nSending...\r\n", milliseconds(12'340));
  EXPECT_EQ(kept_.text(),
            "SendBeeperMessage:\nBeep Number:5550100\nComplete Message:\n222\nSending...\n"
            "   12.3 s  opening the port\n");
}

TEST_F(AlertTellerTest, PutsTimesBeforeTheLinesOfTheLog) {
  Begin("Beeper", true);
  teller_->TellLog("Complete Message:\r\n222", milliseconds(100));
  teller_->TellLog("77\r\nSending...\r\n", milliseconds(250));
  EXPECT_EQ(kept_.text(),
            "    0.1 s    Complete Message:\n"
            "    0.1 s    22277\n"
            "    0.3 s    Sending...\n"
            "    0.3 s  opening the port\n");
}

TEST_F(AlertTellerTest, HidesSecretsEverywhere) {
  Begin("Beeper");
  teller_->TellLog("Complete Message:\r\nthe secret\r\nSending...\r\n", milliseconds(0));
  End(kFailedOutcome, milliseconds(0));
  EXPECT_EQ(kept_.text().find("secret"), std::string::npos);
  EXPECT_EQ(teller_->log().find("secret"), std::string::npos);
}

TEST_F(AlertTellerTest, TellsProgramsEachThingAsItIs) {
  Begin("LaunchProgram", false, ReportForm::kJson);
  teller_->TellLog("a\r\n\x1B", milliseconds(1500));
  End(kFailedOutcome, milliseconds(2000));
  EXPECT_THAT(kept_.text(),
              testing::StartsWith("{\"log\":\"a\\r\\n\\u001b\",\"seconds\":1.5}\n"
                                  "{\"delivered\":false,\"verdict\":\"not delivered"));
  EXPECT_THAT(kept_.text(),
              testing::EndsWith("\"result\":\"0x80004005 (E_FAIL)\",\"seconds\":2.0}\n"));
}

TEST_F(AlertTellerTest, KeepsTheLogForTheJournal) {
  Begin("LaunchProgram");
  teller_->TellLog("a\r\n", milliseconds(0));
  teller_->TellLog("b", milliseconds(0));
  EXPECT_EQ(teller_->log(), "a\r\nb");
}

}  // namespace
}  // namespace brantel::host
