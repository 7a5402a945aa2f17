// docs/troubleshooting.md tells of the rows of host/course/course_row.cpp, behind what is written
// there by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/course/course_row.h"
#include "host/course/particulars.h"
#include "host/text/control_characters.h"
#include "pager/ucp/ucp_error.h"
#include "tests/unit/made_file.h"
#include "tests/unit/project_file.h"
#include "text/digits.h"
#include "text/string_table.h"

namespace brantel::host {
namespace {

constexpr const char* kTroubleshooting = "docs/troubleshooting.md";
constexpr std::string_view kMadeFromHere =
    "<!-- From here on made from host/course/course_row.cpp -->\n";

struct Section {
  std::string_view title;
  std::vector<Way> ways;
};

constexpr std::array kPagerProtocols = {Way::kTap, Way::kSmsTap, Way::kUcp, Way::kNtt};

// A row stands in the first section that has room for all of its ways.
std::vector<Section> Sections() {
  return {{"TAP and SMS-TAP", {Way::kTap, Way::kSmsTap}},
          {"UCP-SMS", {Way::kUcp}},
          {"NTT", {Way::kNtt}},
          {"Beeper", {Way::kBeeper}},
          {"Port, modem and call", {Way::kBeeper, Way::kTap, Way::kSmsTap, Way::kUcp, Way::kNtt}},
          {"SMTPMail", {Way::kSmtpMail}},
          {"Voice", {Way::kVoice}},
          {"Sound, LaunchProgram and WinPopup", {Way::kSound, Way::kLaunchProgram, Way::kWinPopup}},
          {"All classes", {}}};
}

bool HasRoomFor(const Section& section, Ways ways) {
  if (section.ways.empty()) return true;
  for (int way = 0; way <= static_cast<int>(Way::kVoice); ++way) {
    const bool is_here =
        std::ranges::find(section.ways, static_cast<Way>(way)) != section.ways.end();
    if (ways.Has(static_cast<Way>(way)) && !is_here) return false;
  }
  return true;
}

struct WayName {
  Way way;
  std::string_view name;
};

constexpr std::array kClassNames = {
    WayName{Way::kSmtpMail, "SMTPMail"}, WayName{Way::kSound, "Sound"},
    WayName{Way::kWinPopup, "WinPopup"}, WayName{Way::kLaunchProgram, "LaunchProgram"},
    WayName{Way::kBeeper, "Beeper"},     WayName{Way::kVoice, "Voice"}};
constexpr std::array kProtocolNames = {WayName{Way::kTap, "TAP"}, WayName{Way::kSmsTap, "SMS-TAP"},
                                       WayName{Way::kUcp, "UCP-SMS"}, WayName{Way::kNtt, "NTT"}};

void Append(std::string& list, std::string_view name) {
  list += (list.empty() ? "" : ", ") + std::string(name);
}

std::string NamesOf(Ways ways) {
  std::string classes;
  for (const WayName& row : kClassNames) {
    if (ways.Has(row.way)) Append(classes, row.name);
  }
  const auto is_meant = [&](Way protocol) { return ways.Has(protocol); };
  if (std::ranges::all_of(kPagerProtocols, is_meant)) {
    Append(classes, "Pager");
    return classes == "SMTPMail, Sound, WinPopup, LaunchProgram, Beeper, Voice, Pager" ? "all"
                                                                                       : classes;
  }
  for (const WayName& row : kProtocolNames) {
    if (ways.Has(row.way)) Append(classes, row.name);
  }
  return classes;
}

// What an answer is to.
struct Question {
  Stage stage;
  std::string_view name;
};

constexpr std::array kQuestions = {Question{Stage::kModem, "the initialisation"},
                                   Question{Stage::kDialling, "the dial command"},
                                   Question{Stage::kPrompt, "the call"},
                                   Question{Stage::kLogIn, "the log-in"},
                                   Question{Stage::kPage, "the page"},
                                   Question{Stage::kRelay, "the connection"},
                                   Question{Stage::kHello, "HELO"},
                                   Question{Stage::kSender, "MAIL"},
                                   Question{Stage::kRecipient, "RCPT"},
                                   Question{Stage::kData, "DATA"},
                                   Question{Stage::kText, "the message"},
                                   Question{Stage::kTextEnd, "the full stop"},
                                   Question{Stage::kTalk, "the connection"},
                                   Question{Stage::kEnding, "the hang-up"}};

std::string QuestionsOf(const CourseRow& row) {
  std::string names;
  for (const Question& question : kQuestions) {
    if (!row.sign.within.Has(question.stage)) continue;
    const bool is_quit = question.stage == Stage::kEnding && row.ways.Has(Way::kSmtpMail);
    Append(names, is_quit ? "QUIT" : question.name);
  }
  return names;
}

std::string Code(std::string_view text) {
  return "`" + ShowControlCharacters(text) + "`";
}

// What the module writes behind "EMI Error" for the error of this answer, if it is one.
std::string UcpWords(std::string_view answer) {
  const std::string_view code = answer.substr(std::min<std::size_t>(answer.size(), 3));
  if (!answer.starts_with("/N/") || code.size() != 2 || !IsDigit(code[0])) return {};
  return "; the log has " + Code("EMI Error: " + UcpErrorText(code));
}

std::string SaidText(const Sign& sign) {
  switch (sign.match) {
    case Match::kAnything:
      return "anything else";
    case Match::kAll:
      return sign.text.empty() ? "nothing" : Code(sign.text);
    case Match::kStart:
      return sign.text.empty() ? "anything" : Code(std::string(sign.text) + "...");
    case Match::kEnd:
      return Code("..." + std::string(sign.text));
    case Match::kOpen:
      return Code(sign.text);
    case Match::kWithin:
      return Code(sign.speaker == Speaker::kSending ? "..." + std::string(sign.text) + "..."
                                                    : std::string(sign.text));
  }
  return {};
}

// Where a line of the module's means something else than elsewhere.
std::string PlaceOf(const CourseRow& row) {
  const auto* const place = std::ranges::find_if(kQuestions, [&](const Question& question) {
    return row.bearing != Bearing::kNone && row.sign.within == Stages(question.stage);
  });
  return place == kQuestions.end() ? "" : " behind " + std::string(place->name);
}

std::string TextOf(const CourseRow& row) {
  const std::string said = SaidText(row.sign);
  switch (row.sign.speaker) {
    case Speaker::kModule:
      return row.sign.text.empty() ? "any other line" : said + PlaceOf(row);
    case Speaker::kSending:
      return "sends " + said;
    case Speaker::kModem:
    case Speaker::kRelay:
      return said + " to " + QuestionsOf(row) + UcpWords(row.sign.text);
    case Speaker::kNobody:
      return "no line behind " + QuestionsOf(row);
    case Speaker::kSuccess:
      return row.sign.text.empty() ? "any other success" : "result " + said;
    case Speaker::kFailure:
      return row.sign.text.empty() ? "any other failure" : "result " + said;
  }
  return {};
}

// Words without what is known of a single alert alone.
std::string General(std::string_view words) {
  return FillIn(words, {{"rest", "..."}, {"answer", "..."}, {"phase", "..."}});
}

std::string TableOf(const Section& section, const std::vector<Section>& sections) {
  std::string table = "## " + std::string(section.title) +
                      "\n\n| Text | Class | What it means | What to do |\n|---|---|---|---|\n";
  for (const CourseRow& row : CourseRows()) {
    const auto home = std::ranges::find_if(
        sections, [&](const Section& candidate) { return HasRoomFor(candidate, row.ways); });
    if (home->title != section.title) continue;
    table += "| " + TextOf(row) + " | " + NamesOf(row.ways) + " | " + General(row.words) + " | " +
             std::string(row.advice) + " |\n";
  }
  return table;
}

TEST(TroubleshootingDoc, TellsOfAllRows) {
  std::string text = ReadProjectFile(kTroubleshooting);
  const std::size_t place = text.find(kMadeFromHere);
  ASSERT_NE(place, std::string::npos);
  text.resize(place + kMadeFromHere.size());
  const std::vector<Section> sections = Sections();
  for (const Section& section : sections) {
    text += "\n" + TableOf(section, sections);
  }
  ExpectMadeFile(kTroubleshooting, text);
}

}  // namespace
}  // namespace brantel::host
