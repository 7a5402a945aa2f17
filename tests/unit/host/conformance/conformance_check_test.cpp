#include "host/conformance/conformance_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "host/report/report_writer.h"
#include "host/text/text_sink.h"

namespace brantel::host {
namespace {

using ::testing::HasSubstr;

// What a trial tells in which all is well, up to a check.
std::string KeptUpTo(std::size_t count) {
  std::string lines;
  for (std::size_t i = 0; i < count; ++i)
    lines += BeginLine(kConformanceChecks.at(i)) + EndLine(CheckState::kKept, "");
  return lines;
}

// What became of the fifth check, ExpandMessage's first, which had begun when the process ended.
CheckResult FifthAt(const TrialEnd& end) {
  return ReadTrial(KeptUpTo(4) + BeginLine(kConformanceChecks[4]), end).at(4);
}

class ConformanceText final : public TextSink {
 public:
  void Write(std::string_view text) const override { text_ += text; }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  mutable std::string text_;
};

TEST(ConformanceCheck, ReadsWhatTheTrialTells) {
  const auto results =
      ReadTrial(KeptUpTo(2) + BeginLine(kConformanceChecks[2]) +
                    EndLine(CheckState::kBroken, "it answers\nS_OK") +
                    BeginLine(kConformanceChecks[3]) + EndLine(CheckState::kNotTried, "why"),
                {});

  ASSERT_EQ(results.size(), kConformanceChecks.size());
  EXPECT_EQ(results[1].state, CheckState::kKept);
  EXPECT_EQ(results[2].state, CheckState::kBroken);
  // A line for the trial is a line, whatever a host has said.
  EXPECT_EQ(results[2].seen, "it answers<0A>S_OK");
  EXPECT_EQ(results[3].state, CheckState::kNotTried);
  EXPECT_EQ(results[3].seen, "why");
  EXPECT_EQ(results[4].state, CheckState::kNotTried);
}

TEST(ConformanceCheck, BlamesTheCheckAmidWhichTheProcessEnded) {
  EXPECT_EQ(FifthAt({false, 0xC0000005}).seen, "the process ended with 0xc0000005");
  EXPECT_EQ(FifthAt({false, 0xC0000005}).rule, 9);
  EXPECT_EQ(FifthAt({true, 1}).seen, "it does not return");
  EXPECT_EQ(FifthAt({true, 1}).state, CheckState::kBroken);
}

TEST(ConformanceCheck, KnowsTheEndsThatAnExceptionBrings) {
  for (const unsigned code : {0xE06D7363U, 0x20474343U, 3U}) {
    EXPECT_EQ(FifthAt({false, code}).rule, 12) << code;
    EXPECT_THAT(FifthAt({false, code}).seen, HasSubstr("an exception left the object"));
  }
}

TEST(ConformanceCheck, TellsOfATrialThatToldNothing) {
  for (const CheckResult& result : ReadTrial("", {}))
    EXPECT_EQ(result.state, CheckState::kNotTried);
}

TEST(ConformanceCheck, CountsWhatIsBroken) {
  const ConformanceText told;
  std::vector<CheckResult> results(kConformanceChecks.size(), {CheckState::kKept});
  results[4] = {CheckState::kBroken, 9, "it leaves what is no BSTR"};

  EXPECT_EQ(WriteConformance(ReportWriter(told, ReportForm::kText, false), results), 1);

  EXPECT_THAT(told.text(),
              HasSubstr("\nbroken     rule 9: ExpandMessage leaves a valid BSTR, or null, for any "
                        "text; it leaves what is no BSTR\nkept "));
  EXPECT_THAT(told.text(), HasSubstr("\n\n1 broken\n"));
}

}  // namespace
}  // namespace brantel::host
