#include "host/watch/plan_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace brantel::host {
namespace {

// What is found of an item with this code that these instances tell of, a text for each finding.
std::vector<std::string> FaultsOfCode(const std::string& code,
                                      const std::vector<std::string>& instances) {
  const std::map<std::string, std::string> classes = {
      {"Night", "Beeper"}, {"Call", "Voice"}, {"Mail", "SMTPMail"}};
  WatchPlan plan;
  plan.items = {{.name = "web", .code = code, .alerts = {0}}};
  plan.alerts = {{.name = "night", .instances = instances}};
  std::vector<std::string> texts;
  for (const Diagnosis& diagnosis : DiagnoseItems(plan, classes)) {
    EXPECT_EQ(diagnosis.kind + " " + diagnosis.name, "item web");
    for (const Finding& finding : diagnosis.findings)
      texts.push_back(std::string(SeverityName(finding.severity)) + ": " + FindingText(finding));
  }
  return texts;
}

TEST(PlanCheck, WantsDigitsForABeeper) {
  const std::string words =
      " has no digits, so that Night (Beeper) does not say which item it is; write a code of "
      "digits";
  EXPECT_THAT(FaultsOfCode("", {"Night"}), testing::ElementsAre("warning: code" + words));
  EXPECT_THAT(FaultsOfCode("[auto]", {"Night"}),
              testing::ElementsAre("warning: code '[auto]'" + words));
  EXPECT_THAT(FaultsOfCode("17", {"Night", "Mail"}), testing::IsEmpty());
}

TEST(PlanCheck, WantsAWaveFileForVoice) {
  EXPECT_THAT(FaultsOfCode("", {"Call"}),
              testing::ElementsAre("failure: code is missing, and without it Call (Voice) has no "
                                   "wave file to play; write its name, or [auto] for that of the "
                                   "item"));
  EXPECT_THAT(FaultsOfCode("[auto]", {"Call"}), testing::IsEmpty());
}

TEST(PlanCheck, AsksForNoCodeWhereNobodyNeedsIt) {
  EXPECT_THAT(FaultsOfCode("", {"Mail", "not there"}), testing::IsEmpty());
}

}  // namespace
}  // namespace brantel::host
