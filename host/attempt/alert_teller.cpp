#include "host/attempt/alert_teller.h"

#include <utility>

#include "host/outcome/result_text.h"
#include "host/text/seconds_text.h"

namespace brantel::host {
namespace {

double Seconds(ElapsedTime elapsed) {
  return std::chrono::duration<double>(elapsed).count();
}

std::string TimeColumn(ElapsedTime elapsed) {
  return RightAligned(SecondsText(Seconds(elapsed)), kSecondsWidth);
}

// The lines of a log with the time before each that begins.
std::string Stamped(std::string_view lines, bool at_line_start, ElapsedTime elapsed) {
  std::string stamped;
  for (const char c : lines) {
    if (at_line_start) stamped += TimeColumn(elapsed) + "    ";
    stamped += c;
    at_line_start = c == '\n';
  }
  return stamped;
}

std::string Capitalised(std::string words) {
  if (!words.empty() && words[0] >= 'a' && words[0] <= 'z')
    words[0] = static_cast<char>(words[0] - 'a' + 'A');
  return words;
}

}  // namespace

std::string AttemptSummary::Sentence() const {
  return verdict.advice.empty() ? verdict.words : verdict.words + "; " + verdict.advice;
}

AlertTeller::AlertTeller(const ReportWriter& report, AlertCourse course, LogSecrets secrets,
                         bool has_times)
    : report_(report),
      course_(std::move(course)),
      secrets_(std::move(secrets)),
      has_times_(has_times) {}

void AlertTeller::TellLog(std::string_view text, ElapsedTime elapsed) {
  if (auto phase = course_.Take(text)) phase_ = *std::move(phase);
  const std::string shown = secrets_.Hide(text);
  log_ += shown;
  const bool at_line_start = log_text_.at_line_start();
  const std::string lines = log_text_.Render(shown);
  report_.Entry(has_times_ ? Stamped(lines, at_line_start, elapsed) : lines,
                {{"log", shown}, {"seconds", Seconds(elapsed)}});
  if (log_text_.at_line_start()) TellPhase(elapsed);
}

void AlertTeller::TellPhase(ElapsedTime elapsed) {
  if (phase_.empty()) return;
  const std::string phase = secrets_.Hide(std::exchange(phase_, ""));
  report_.Entry(TimeColumn(elapsed) + "  " + phase + "\n",
                {{"phase", phase}, {"seconds", Seconds(elapsed)}});
}

AttemptSummary AlertTeller::Summarise(const AttemptOutcome& outcome, ElapsedTime elapsed) const {
  AttemptSummary summary{.verdict = course_.Finish(outcome.end, outcome.result),
                         .result = outcome.result ? ResultText(*outcome.result) : "",
                         .seconds = Seconds(elapsed)};
  for (std::string* const text : {&summary.verdict.words, &summary.verdict.advice})
    *text = secrets_.Hide(*text);
  return summary;
}

// The result is told where it says more than success.
void AlertTeller::TellEnd(const AttemptSummary& summary) {
  EndLine();
  std::string words = Capitalised(summary.Sentence()) + "; " + SecondsText(summary.seconds);
  if (!summary.result.empty() && summary.result != ResultText(0)) words += "; " + summary.result;
  const Colour colour = summary.verdict.delivered ? Colour::kGreen : Colour::kRed;
  report_.Entry(report_.Painted(colour, words) + "\n", {{"delivered", summary.verdict.delivered},
                                                        {"verdict", summary.verdict.words},
                                                        {"advice", summary.verdict.advice},
                                                        {"result", summary.result},
                                                        {"seconds", summary.seconds}});
}

void AlertTeller::EndLine() {
  if (!log_text_.at_line_start()) report_.Prose(log_text_.Render("\n"));
}

}  // namespace brantel::host
