#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/report/report_writer.h"

namespace brantel::host {

// What is tried of a host's callback object. The order is that of the trial.
struct ConformanceCheck {
  std::string_view name;
  int rule;  // of the contract; 0 for what COM asks of every object
  std::string_view demand;
};

inline constexpr std::array kConformanceChecks = {
    ConformanceCheck{"interface", 2, "the object offers INotifierHost"},
    ConformanceCheck{"identity", 0, "IUnknown is the same pointer whenever it is asked for"},
    ConformanceCheck{"unknown interface", 0,
                     "an unknown interface is E_NOINTERFACE, and null is stored"},
    ConformanceCheck{"references", 0, "each pointer that is stored has a reference of its own"},
    ConformanceCheck{"texts", 9, "ExpandMessage leaves a valid BSTR, or null, for any text"},
    ConformanceCheck{"words", 9, "ExpandMessage leaves words without variables as they are"},
    ConformanceCheck{"old text", 9, "ExpandMessage frees the text that it replaces"},
    ConformanceCheck{"log text", 6, "LogMessage leaves its text to the caller"},
    ConformanceCheck{"log", 10, "LogMessage appends texts unchanged, line breaks and all"},
    ConformanceCheck{"event", 11, "GetAlertTrigger stores the trigger word of the event"},
    ConformanceCheck{"no event", 11, "GetAlertTrigger fails when there is no event"},
    ConformanceCheck{"worker", 4, "an object that a worker apartment made does the same there"},
    ConformanceCheck{"end", 0, "the object goes with its last reference"},
};

// With what a process ends that an exception of g++ has left.
inline constexpr unsigned kExceptionOfGcc = 0x20474343;

// What became of a check, as the trial tells it: a word, and what was seen where it is broken.
enum class CheckState { kNotTried, kKept, kBroken };

struct CheckResult {
  CheckState state = CheckState::kNotTried;
  int rule = 0;
  std::string seen{};
};

// The trial writes a line as each check begins, and one when it has ended. A process that ended in
// between has told of the check by its silence.
std::string BeginLine(const ConformanceCheck& check);
std::string EndLine(CheckState state, std::string_view seen);

// How the process of a trial ended.
struct TrialEnd {
  bool has_timed_out = false;
  unsigned exit_code = 0;
};

// What became of each check, by the lines of the trial and its process's end.
std::vector<CheckResult> ReadTrial(std::string_view lines, const TrialEnd& end);

// Tells of each check, and sums up. Returns how many are broken.
int WriteConformance(const ReportWriter& report, const std::vector<CheckResult>& results);

}  // namespace brantel::host
