#include "host/delivery/delivery_course.h"

#include <utility>

#include "host/outcome/result_text.h"

namespace brantel::host {

std::string DeliverySummary::Sentence() const {
  return verdict.advice.empty() ? verdict.words : verdict.words + "; " + verdict.advice;
}

DeliveryCourse::DeliveryCourse(AlertCourse course, LogSecrets secrets, DeliveryListener& listener)
    : course_(std::move(course)), secrets_(std::move(secrets)), listener_(listener) {}

void DeliveryCourse::Take(std::string_view text, ElapsedTime elapsed) {
  const auto phase = course_.Take(text);
  const std::string shown = secrets_.Hide(text);
  log_ += shown;
  listener_.OnLog(shown, elapsed);
  if (phase) listener_.OnPhase(secrets_.Hide(*phase), elapsed);
}

DeliverySummary DeliveryCourse::Summarise(const AttemptOutcome& outcome,
                                          ElapsedTime elapsed) const {
  DeliverySummary summary{.seconds = std::chrono::duration<double>(elapsed).count()};
  if (outcome.fault) {
    summary.verdict.words = "not tried: " + outcome.fault->message;
    return summary;
  }
  summary.verdict = course_.Finish(outcome.end, outcome.result);
  for (std::string* const text : {&summary.verdict.words, &summary.verdict.advice})
    *text = secrets_.Hide(*text);
  if (outcome.result) summary.result = ResultText(*outcome.result);
  return summary;
}

}  // namespace brantel::host
