#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/journal/journal_entry.h"
#include "host/report/report_writer.h"

namespace brantel::host {

// How it stands with an attempt.
enum class AttemptState {
  kRunning,
  kDelivered,
  kFailed,
  kCutOff,  // the host was ended before it could note the end
};

// "running", "delivered", "failed" or "cut off".
std::string_view AttemptStateName(AttemptState state);

// Whether the process of an attempt whose end is not noted still runs.
using RunningCheck = std::function<bool(const JournalEntry& entry)>;

AttemptState StateOf(const JournalEntry& entry, const RunningCheck& runs_still);

// Which attempts are of interest.
struct HistoryFilter {
  bool is_failed_only = false;  // those that were cut off, too
  std::optional<PointInTime> since{};
};

// An attempt in a line for people, such as "Pager Night, trap: the centre took the page".
std::string HistoryText(const JournalEntry& entry);

// Tells of the attempts in a journal, of each again when it stands otherwise with it.
class JournalHistory {
 public:
  JournalHistory(const ReportWriter& report, HistoryFilter filter, RunningCheck runs_still);

  // Tells of what is new, in the journal's order.
  void Tell(const std::vector<JournalEntry>& entries);

  [[nodiscard]] bool has_told() const { return !told_.empty(); }

 private:
  [[nodiscard]] bool Matches(const JournalEntry& entry, AttemptState state) const;

  const ReportWriter& report_;
  const HistoryFilter filter_;
  const RunningCheck runs_still_;
  std::map<std::string, AttemptState> told_;  // by the attempts' ids
};

}  // namespace brantel::host
