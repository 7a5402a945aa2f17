#include "host/journal/journal_history.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "host/text/control_characters.h"
#include "host/text/seconds_text.h"

namespace brantel::host {
namespace {

Colour ColourOf(AttemptState state) {
  switch (state) {
    case AttemptState::kRunning:
      return Colour::kYellow;
    case AttemptState::kDelivered:
      return Colour::kGreen;
    case AttemptState::kFailed:
    case AttemptState::kCutOff:
      break;
  }
  return Colour::kRed;
}

// What it is about, such as "Beeper Night, item-down", and behind it which decision of a watch,
// such as "night.toml#12".
std::string Subject(const JournalEntry& entry) {
  const std::string file = entry.instance.substr(entry.instance.rfind('\\') + 1);
  const std::string decision = entry.decision.empty() ? "" : ", " + entry.decision;
  return entry.class_name + (file.empty() ? "" : " " + file) + ", " + entry.event + decision;
}

// Nothing where the end is not known.
std::string TimeTaken(const JournalEntry& entry) {
  return entry.end ? RightAligned(SecondsText(entry.end->seconds), kSecondsWidth) + "  " : "";
}

Record RecordOf(const JournalEntry& entry, AttemptState state) {
  Record record = {{"began", TimeText(entry.began)}, {"command", entry.command},
                   {"class", entry.class_name},      {"instance", entry.instance},
                   {"event", entry.event},           {"state", AttemptStateName(state)}};
  if (!entry.decision.empty()) record["decision"] = entry.decision;
  if (!entry.end) return record;
  record["seconds"] = entry.end->seconds;
  record["verdict"] = entry.end->verdict;
  record["result"] = entry.end->result;
  record["log"] = entry.end->log;
  return record;
}

}  // namespace

std::string_view AttemptStateName(AttemptState state) {
  switch (state) {
    case AttemptState::kRunning:
      return "running";
    case AttemptState::kDelivered:
      return "delivered";
    case AttemptState::kFailed:
      return "failed";
    case AttemptState::kCutOff:
      break;
  }
  return "cut off";
}

AttemptState StateOf(const JournalEntry& entry, const RunningCheck& runs_still) {
  if (entry.end) return entry.end->is_delivered ? AttemptState::kDelivered : AttemptState::kFailed;
  return runs_still(entry) ? AttemptState::kRunning : AttemptState::kCutOff;
}

std::string HistoryText(const JournalEntry& entry) {
  return ShowControlCharacters(Subject(entry) + (entry.end ? ": " + entry.end->verdict : ""));
}

JournalHistory::JournalHistory(const ReportWriter& report, HistoryFilter filter,
                               RunningCheck runs_still)
    : report_(report), filter_(filter), runs_still_(std::move(runs_still)) {}

void JournalHistory::Tell(const std::vector<JournalEntry>& entries) {
  constexpr std::size_t kStateWidth = 10;
  for (const JournalEntry& entry : entries) {
    const AttemptState state = StateOf(entry, runs_still_);
    if (!Matches(entry, state)) continue;
    const auto [told, is_new] = told_.emplace(entry.id, state);
    if (!is_new && told->second == state) continue;
    told->second = state;
    const std::string name(AttemptStateName(state));
    report_.Entry(ShortTimeText(entry.began) + "  " + report_.Painted(ColourOf(state), name) +
                      std::string(kStateWidth - name.size(), ' ') + TimeTaken(entry) +
                      HistoryText(entry) + "\n",
                  RecordOf(entry, state));
  }
}

bool JournalHistory::Matches(const JournalEntry& entry, AttemptState state) const {
  const bool has_failed = state == AttemptState::kFailed || state == AttemptState::kCutOff;
  return (has_failed || !filter_.is_failed_only) &&
         (!filter_.since || entry.began.utc >= filter_.since->utc);
}

}  // namespace brantel::host
