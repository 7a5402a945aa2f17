#include "host/delivery/delivery_teller.h"

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

class DeliveryTellerTest : public testing::Test {
 protected:
  void Begin(std::string_view class_name, bool has_times = false,
             ReportForm form = ReportForm::kText) {
    report_.emplace(kept_, form, false);
    teller_.emplace(*report_, warnings_, has_times);
    course_.emplace(AlertCourse(class_name, std::nullopt), LogSecrets({"secret"}), *teller_);
  }

  void End(const AttemptOutcome& outcome, milliseconds elapsed) {
    teller_->TellEnd(course_->Summarise(outcome, elapsed));
  }

  KeptText kept_;
  std::optional<ReportWriter> report_;
  KeptText warnings_;
  std::optional<DeliveryTeller> teller_;
  std::optional<DeliveryCourse> course_;
};

TEST_F(DeliveryTellerTest, PrintsTheLogAsItComes) {
  Begin("LaunchProgram");
  course_->Take("one\r\ntw", milliseconds(0));
  EXPECT_EQ(kept_.text(), "one\ntw");
  course_->Take("o\x1B\r\n", milliseconds(10));
  EXPECT_EQ(kept_.text(), "one\ntwo<1B>\n");
}

TEST_F(DeliveryTellerTest, EndsWithTheVerdictOnALineOfItsOwn) {
  Begin("LaunchProgram");
  course_->Take("open", milliseconds(0));
  End(kDeliveredOutcome, milliseconds(71'260));
  EXPECT_EQ(kept_.text(), "open\nThe program was started; nobody waits for what it does; 71.3 s\n");
}

TEST_F(DeliveryTellerTest, NamesAResultThatIsNotPlainSuccess) {
  Begin("LaunchProgram");
  End(kFailedOutcome, milliseconds(40));
  EXPECT_TRUE(kept_.text().starts_with("Not delivered"));
  EXPECT_TRUE(kept_.text().ends_with("; 0.0 s; 0x80004005 (E_FAIL)\n"));
}

TEST_F(DeliveryTellerTest, SaysWhenThereIsNoResult) {
  Begin("LaunchProgram");
  End({.end = AttemptEnd::kTimedOut}, milliseconds(2000));
  EXPECT_TRUE(kept_.text().starts_with("No result: "));
  EXPECT_TRUE(kept_.text().ends_with("; 2.0 s\n"));
}

TEST_F(DeliveryTellerTest, TellsPhasesBehindTheLineThatBeginsThem) {
  Begin("Beeper");
  course_->Take("SendBeeperMessage:\r\nBeep Number:", milliseconds(100));
  course_->Take("5550100\r\n", milliseconds(200));
  course_->Take("Complete Message:\r\n222", milliseconds(300));
  course_->Take("\r\nSending...\r\n", milliseconds(12'340));
  EXPECT_EQ(kept_.text(),
            "SendBeeperMessage:\nBeep Number:5550100\nComplete Message:\n222\nSending...\n"
            "   12.3 s  opening the port\n");
}

TEST_F(DeliveryTellerTest, PutsTimesBeforeTheLinesOfTheLog) {
  Begin("Beeper", true);
  course_->Take("Complete Message:\r\n222", milliseconds(100));
  course_->Take("77\r\nSending...\r\n", milliseconds(250));
  EXPECT_EQ(kept_.text(),
            "    0.1 s    Complete Message:\n"
            "    0.1 s    22277\n"
            "    0.3 s    Sending...\n"
            "    0.3 s  opening the port\n");
}

TEST_F(DeliveryTellerTest, HidesSecretsEverywhere) {
  Begin("Beeper");
  course_->Take("Complete Message:\r\nthe secret\r\nSending...\r\n", milliseconds(0));
  End(kFailedOutcome, milliseconds(0));
  EXPECT_EQ(kept_.text().find("secret"), std::string::npos);
  EXPECT_EQ(course_->log().find("secret"), std::string::npos);
}

TEST_F(DeliveryTellerTest, TellsProgramsEachThingAsItIs) {
  Begin("LaunchProgram", false, ReportForm::kJson);
  course_->Take("a\r\n\x1B", milliseconds(1500));
  End(kFailedOutcome, milliseconds(2000));
  EXPECT_THAT(kept_.text(),
              testing::StartsWith("{\"log\":\"a\\r\\n\\u001b\",\"seconds\":1.5}\n"
                                  "{\"delivered\":false,\"verdict\":\"not delivered"));
  EXPECT_THAT(kept_.text(),
              testing::EndsWith("\"result\":\"0x80004005 (E_FAIL)\",\"seconds\":2.0}\n"));
}

TEST_F(DeliveryTellerTest, KeepsTheLogForTheJournal) {
  Begin("LaunchProgram");
  course_->Take("a\r\n", milliseconds(0));
  course_->Take("b", milliseconds(0));
  EXPECT_EQ(course_->log(), "a\r\nb");
}

TEST_F(DeliveryTellerTest, WarnsApartFromTheReport) {
  Begin("LaunchProgram");
  course_->Take("open", milliseconds(0));
  teller_->OnWarning("COM1 cannot be opened");
  EXPECT_EQ(warnings_.text(), "notifyhost: warning: COM1 cannot be opened\n");
  EXPECT_EQ(kept_.text(), "open");
}

TEST_F(DeliveryTellerTest, SaysWhyAnAlertWasNotTried) {
  Begin("LaunchProgram");
  const DeliverySummary summary = course_->Summarise(
      {.end = AttemptEnd::kReturned,
       .result = std::nullopt,
       .fault = AttemptFault{.exit_code = ExitCode::kFailed, .message = "no such class"}},
      milliseconds(250));
  EXPECT_FALSE(summary.verdict.delivered);
  EXPECT_EQ(summary.Sentence(), "not tried: no such class");
  EXPECT_EQ(summary.seconds, 0.25);
}

}  // namespace
}  // namespace brantel::host
