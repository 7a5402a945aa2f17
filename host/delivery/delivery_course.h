#pragma once

#include <string>
#include <string_view>

#include "host/alert/log_secrets.h"
#include "host/attempt/attempt.h"
#include "host/course/alert_course.h"
#include "host/delivery/delivery_listener.h"

namespace brantel::host {

// What a delivery came to. Texts are without what is secret.
struct DeliverySummary {
  Verdict verdict{};
  std::string result{};  // Send's, with its name; empty where it gave none
  double seconds = 0;

  // What to do about it stands behind, where there is something.
  [[nodiscard]] std::string Sentence() const;
};

// Follows a delivery by its log, and keeps what is secret to itself.
class DeliveryCourse {
 public:
  // The listener must outlive the object.
  DeliveryCourse(AlertCourse course, LogSecrets secrets, DeliveryListener& listener);

  // The next text of the log, of which the listener is told.
  void Take(std::string_view text, ElapsedTime elapsed);

  [[nodiscard]] DeliverySummary Summarise(const AttemptOutcome& outcome, ElapsedTime elapsed) const;

  // All of the log, without what is secret.
  [[nodiscard]] const std::string& log() const { return log_; }

 private:
  AlertCourse course_;
  const LogSecrets secrets_;
  DeliveryListener& listener_;
  std::string log_;
};

}  // namespace brantel::host
