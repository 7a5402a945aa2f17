#include "host/course/course_row.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/course/log_texts.h"

namespace brantel::host {
namespace {

struct ModuleText {
  std::string_view name;
  std::string_view text;
};

#define STRING(name, id, text) {#name, text},
constexpr auto kModuleTexts = std::to_array<ModuleText>({
#include "text/strings.def"
});
#undef STRING

// What the module shows in dialogs, finds things by or makes a log line of; none of these is
// logged by itself in the course of an alert. Those whose names begin so, too.
const std::set<std::string_view> kNotLogged = {
    "kProjectName",      "kMailPropertiesTitle", "kMailHelpKey",
    "kMailHelpTitle",    "kErrorLoading",        "kErrorSaving",
    "kNameTaken",        "kNameTakenCaption",    "kNameMissing",
    "kSmtpMailPage",     "kRecorderFailed",      "kDirectoryInvalid",
    "kSelectDirectory",  "kWaveFiles",           "kProgramFiles",
    "kAllFiles",         "kBeeperSettingsKey",   "kPrimaryProfile",
    "kAlternateProfile", "kBeeperPortSettings",  "kErrorSavingPortSettings",
    "kPagerSettingsKey", "kPagerPortSettings",   "kGatewayInvalid",
    "kSenderInvalid",    "kRecipientsInvalid",   "kTimeoutSetting",
    "kSmtpMailKey",      "kCapabilitiesFormat",
    "kSending",   // stands before what is sent
    "kReturned",  // stands before what comes back
};
constexpr std::array<std::string_view, 4> kNotLoggedKinds = {"kAdd", "kEdit", "kDefault",
                                                             "kProtocol"};
// What a UCP centre's refusals mean, all behind kUcpError.
constexpr std::string_view kUcpMeanings = "kUcp";

bool IsLogged(const ModuleText& row) {
  const auto begins = [&](std::string_view kind) { return row.name.starts_with(kind); };
  if (begins(kUcpMeanings)) return row.name == "kUcpError";
  return !kNotLogged.contains(row.name) && !row.name.ends_with("Missing") &&
         std::ranges::none_of(kNotLoggedKinds, begins);
}

// The first line of a text as it is logged, with something in the place of what is filled in.
std::string LoggedLine(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  std::string line(text.substr(0, text.find_first_of("\r\n")));
  if (line.starts_with("%s")) line.replace(0, 2, log_text::kLineNotInitialized);
  return line;
}

bool HasRow(const std::string& line) {
  return std::ranges::any_of(CourseRows(), [&](const CourseRow& row) {
    const Sign& sign = row.sign;
    if (sign.speaker != Speaker::kModule || sign.text.empty()) return false;
    if (sign.match == Match::kAll) return line == sign.text;
    if (sign.match == Match::kEnd) return line.ends_with(sign.text);
    return line.starts_with(sign.text);
  });
}

TEST(CourseRows, TellOfEachTextThatTheModuleLogs) {
  for (const ModuleText& row : kModuleTexts) {
    EXPECT_TRUE(!IsLogged(row) || HasRow(LoggedLine(row.text))) << row.name << ": " << row.text;
  }
}

TEST(CourseRows, TellOfNoTextThatTheModuleDoesNotLog) {
  for (const ModuleText& row : kModuleTexts) {
    EXPECT_FALSE(!IsLogged(row) && std::ranges::any_of(CourseRows(), [&](const CourseRow& known) {
      return known.sign.text == LoggedLine(row.text);
    })) << row.name;
  }
}

// Something by which the sign is known.
std::string Said(const Sign& sign) {
  if (sign.match == Match::kAnything) return "something else";
  return (sign.match == Match::kWithin ? " " : "") + std::string(sign.text);
}

// A row that one before it hides is never reached.
TEST(CourseRows, AreAllReached) {
  for (const CourseRow& row : CourseRows()) {
    bool is_reached = false;
    for (int way = 0; way <= static_cast<int>(Way::kVoice); ++way) {
      for (int stage = 0; stage <= static_cast<int>(Stage::kEnding); ++stage) {
        const Situation situation{static_cast<Way>(way), static_cast<Stage>(stage)};
        if (!row.ways.Has(situation.way) || !row.sign.within.Has(situation.stage)) continue;
        const std::string said = Said(row.sign);
        is_reached = is_reached || FindCourseRow(situation, row.sign.speaker, said) == &row;
      }
    }
    EXPECT_TRUE(is_reached) << row.sign.text << ": " << row.words;
  }
}

TEST(CourseRows, SayThingsInClauses) {
  for (const CourseRow& row : CourseRows()) {
    for (const std::string_view clause : {row.words, row.advice, row.phase}) {
      if (clause.empty()) continue;
      EXPECT_FALSE(clause.front() >= 'A' && clause.front() <= 'Z') << clause;
      EXPECT_TRUE(clause.back() != '.' && clause.back() != ' ') << clause;
      EXPECT_EQ(std::ranges::count(clause, '{'), std::ranges::count(clause, '}')) << clause;
    }
    EXPECT_FALSE(row.words.empty());
  }
}

// Whether a stage is one of those that come before the alert has gone out decides between "not
// delivered" and "not confirmed", so that nobody else may enter one.
TEST(CourseRows, BeginStagesWithPhasesThatAreTold) {
  for (const CourseRow& row : CourseRows()) {
    EXPECT_TRUE(!row.begins || !row.phase.empty()) << row.words;
  }
}

}  // namespace
}  // namespace brantel::host
