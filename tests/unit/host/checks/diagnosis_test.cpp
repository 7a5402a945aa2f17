#include "host/checks/diagnosis.h"

#include <gtest/gtest.h>

#include <string>

#include "module/class_descriptions.h"
#include "tests/unit/host/checks/fake_checked_system.h"
#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

std::string Written(const Diagnosis& diagnosis, ReportForm form, bool has_colours = false) {
  const KeptText keeper;
  WriteDiagnosis(ReportWriter(keeper, form, has_colours), diagnosis);
  return keeper.text();
}

const Finding kWarned{Severity::kWarning, "a", "to", "x\x1B", "is odd", "mend it"};
const Finding kFailed{Severity::kFailure, "b", "", "", "is wrong", "do so"};

TEST(Diagnosis, IsAsSevereAsItsWorstFinding) {
  EXPECT_EQ((Diagnosis{"class", "Sound", "", {}}).severity(), Severity::kOk);
  EXPECT_EQ((Diagnosis{"class", "Sound", "", {kWarned}}).severity(), Severity::kWarning);
  EXPECT_EQ((Diagnosis{"class", "Sound", "", {kFailed, kWarned}}).severity(), Severity::kFailure);
}

TEST(Diagnosis, IsALineWithFurtherFindingsBelow) {
  EXPECT_EQ(Written({"class", "Sound", "", {}}, ReportForm::kText), "ok       Sound\n");
  EXPECT_EQ(Written({"instance", "Night\x07", "Pager", {kWarned, kFailed}}, ReportForm::kText),
            "failure  Night<07> (Pager): to 'x<1B>' is odd; mend it\n"
            "           is wrong; do so\n");
}

TEST(Diagnosis, HasColoursByItsSeverity) {
  EXPECT_EQ(Written({"class", "Sound", "", {}}, ReportForm::kText, true),
            "\x1B[32mok\x1B[0m       Sound\n");
  EXPECT_EQ(Written({"class", "Sound", "", {kFailed}}, ReportForm::kText, true),
            "\x1B[31mfailure\x1B[0m  Sound: is wrong; do so\n");
  EXPECT_EQ(Written({"class", "Sound", "", {kWarned}}, ReportForm::kText, true).substr(0, 5),
            "\x1B[33m");
}

TEST(Diagnosis, IsAnObjectALineForPrograms) {
  const std::string line =
      Written({"instance", "Night", "Pager", {kWarned}}, ReportForm::kJson, true);
  EXPECT_EQ(line.find('\n'), line.size() - 1);
  EXPECT_EQ(line,
            R"({"kind":"instance","name":"Night","class":"Pager","state":"warning","findings":[)"
            R"({"severity":"warning","rule":"a","subject":"to","value":"x\u001b",)"
            R"("complaint":"is odd","remedy":"mend it"}]})"
            "\n");
}

TEST(Diagnosis, TellsWhatIsWrongWithAFile) {
  FakeCheckedSystem system;
  const auto rule_of = [&](const InstanceFile& file) {
    const Diagnosis diagnosis = DiagnoseInstance(file, system, Reach::kOffline);
    return std::pair(diagnosis.severity(), diagnosis.findings.front().rule);
  };
  EXPECT_EQ(rule_of({.name = "notes.txt", .fault = "is no instance"}),
            std::pair(Severity::kWarning, std::string("file")));
  EXPECT_EQ(rule_of({.name = "x", .fault = "cannot be read: error 32"}),
            std::pair(Severity::kFailure, std::string("file")));
  const InstanceLayout& layout = FindClassDescription("Sound")->instances;
  EXPECT_EQ(rule_of({.name = "x", .layout = &layout, .fault = "is refused by Sound"}),
            std::pair(Severity::kFailure, std::string("file")));
}

TEST(Diagnosis, OfALongValueShowsTheBeginning) {
  FakeCheckedSystem system;
  Instance stored(2);
  stored.set_text(0, std::string(60, 'x'));
  const InstanceFile file{.name = "x",
                          .layout = &FindClassDescription("WinPopup")->instances,
                          .instance = stored,
                          .stored = stored};
  const auto findings = DiagnoseInstance(file, system, Reach::kOffline).findings;
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0].value, std::string(40, 'x') + "...");
}

TEST(CheckValues, LooksAtNoSettings) {
  FakeCheckedSystem system;
  system.ports.clear();
  Instance stored(FindClassDescription("Pager")->instances.fields.size());
  stored.set_text(0, "5551234");
  stored.set_text(2, "007");
  stored.set_text(3, "%C");
  stored.set_text(4, "UCP");
  const auto findings = CheckValues(*FindClassDescription("Pager"), stored, system);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].rule, "pager-protocol");
  EXPECT_EQ(findings[0].value, "UCP");
}

}  // namespace
}  // namespace brantel::host
