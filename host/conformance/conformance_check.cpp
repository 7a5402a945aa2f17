#include "host/conformance/conformance_check.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "host/report/record.h"
#include "host/text/control_characters.h"

namespace brantel::host {
namespace {

constexpr int kRuleOfExceptions = 12;

// With what a process ends that an exception of C++ has left: by Microsoft's compiler, by g++, and
// by the C library where the exception ends the program at once.
constexpr std::array<unsigned, 3> kCodesOfExceptions = {0xE06D7363, kExceptionOfGcc, 3};

std::string_view StateName(CheckState state) {
  switch (state) {
    case CheckState::kNotTried:
      return "not tried";
    case CheckState::kKept:
      return "kept";
    case CheckState::kBroken:
      return "broken";
  }
  return "";
}

std::string RuleName(int rule) {
  return rule == 0 ? "COM" : "rule " + std::to_string(rule);
}

std::string Hexadecimal(unsigned code) {
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), code, 16).ptr;
  return "0x" + std::string(digits.begin(), end);
}

CheckResult Unfinished(int rule, const TrialEnd& end) {
  if (end.has_timed_out) return {CheckState::kBroken, rule, "it does not return"};
  const std::string code = Hexadecimal(end.exit_code);
  if (std::ranges::find(kCodesOfExceptions, end.exit_code) != kCodesOfExceptions.end())
    return {CheckState::kBroken, kRuleOfExceptions, "an exception left the object: " + code};
  return {CheckState::kBroken, rule, "the process ended with " + code};
}

std::string_view TakeLine(std::string_view& lines) {
  const std::size_t length = std::min(lines.find('\n'), lines.size());
  const std::string_view line = lines.substr(0, length);
  lines.remove_prefix(std::min(length + 1, lines.size()));
  return line;
}

CheckState StateOfLetter(std::string_view line) {
  if (line.starts_with('k')) return CheckState::kKept;
  return line.starts_with('b') ? CheckState::kBroken : CheckState::kNotTried;
}

}  // namespace

std::string BeginLine(const ConformanceCheck& check) {
  return std::string(check.name) + "\n";
}

std::string EndLine(CheckState state, std::string_view seen) {
  return StateName(state).front() + ShowControlCharacters(seen) + "\n";
}

std::vector<CheckResult> ReadTrial(std::string_view lines, const TrialEnd& end) {
  std::vector<CheckResult> results;
  for (const ConformanceCheck& check : kConformanceChecks) {
    CheckResult result{CheckState::kNotTried, check.rule};
    if (TakeLine(lines) == check.name) {
      const std::string_view line = TakeLine(lines);
      result = line.empty()
                   ? Unfinished(check.rule, end)
                   : CheckResult{StateOfLetter(line), check.rule, std::string(line.substr(1))};
    }
    results.push_back(result);
  }
  return results;
}

int WriteConformance(const ReportWriter& report, const std::vector<CheckResult>& results) {
  int broken = 0;
  for (std::size_t i = 0; i < results.size(); ++i) {
    const auto& [state, rule, seen] = results[i];
    const ConformanceCheck& check = kConformanceChecks.at(i);
    const bool is_broken = state == CheckState::kBroken;
    broken += is_broken ? 1 : 0;
    const std::string name(StateName(state));
    const std::string demand(check.demand);
    std::string words = report.Painted(is_broken ? Colour::kRed : Colour::kGreen, name) +
                        std::string(11 - name.size(), ' ') + RuleName(rule) + ": " + demand;
    if (!seen.empty()) words += "; " + seen;
    report.Entry(words + "\n", {{"check", check.name},
                                {"rule", rule == 0 ? Value() : Value(rule)},
                                {"demand", demand},
                                {"state", name},
                                {"seen", seen}});
  }
  report.Prose("\n" + std::to_string(broken) + " broken\n");
  return broken;
}

}  // namespace brantel::host
