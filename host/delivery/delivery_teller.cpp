#include "host/delivery/delivery_teller.h"

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

void DeliveryTeller::OnLog(std::string_view text, ElapsedTime elapsed) {
  const bool at_line_start = log_text_.at_line_start();
  const std::string lines = log_text_.Render(text);
  report_.Entry(has_times_ ? Stamped(lines, at_line_start, elapsed) : lines,
                {{"log", text}, {"seconds", Seconds(elapsed)}});
  if (log_text_.at_line_start()) TellPhase(elapsed);
}

void DeliveryTeller::OnPhase(std::string_view phase, ElapsedTime elapsed) {
  phase_ = phase;
  if (log_text_.at_line_start()) TellPhase(elapsed);
}

void DeliveryTeller::OnWarning(std::string_view warning) {
  warnings_.Write("notifyhost: warning: " + std::string(warning) + "\n");
}

void DeliveryTeller::TellPhase(ElapsedTime elapsed) {
  if (phase_.empty()) return;
  const std::string phase = std::exchange(phase_, "");
  report_.Entry(TimeColumn(elapsed) + "  " + phase + "\n",
                {{"phase", phase}, {"seconds", Seconds(elapsed)}});
}

// The result is told where it says more than success.
void DeliveryTeller::TellEnd(const DeliverySummary& summary) {
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

void DeliveryTeller::EndLine() {
  if (!log_text_.at_line_start()) report_.Prose(log_text_.Render("\n"));
}

}  // namespace brantel::host
