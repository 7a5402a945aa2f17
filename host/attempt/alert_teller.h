#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "host/alert/log_secrets.h"
#include "host/attempt/attempt.h"
#include "host/course/alert_course.h"
#include "host/report/report_writer.h"
#include "host/text/log_text.h"

namespace brantel::host {

// Since an attempt began.
using ElapsedTime = std::chrono::milliseconds;

// What an attempt came to.
struct AttemptSummary {
  Verdict verdict{};     // without what is secret
  std::string result{};  // Send's, with its name; empty where it gave none
  double seconds = 0;

  // What to do about it stands behind, where there is something.
  [[nodiscard]] std::string Sentence() const;
};

// Tells of an attempt while it goes on: its phases, its log, and at the end its verdict.
class AlertTeller {
 public:
  // The report must outlive the object. What is secret does not reach it. With times each line of
  // the log begins with the seconds that have passed.
  AlertTeller(const ReportWriter& report, AlertCourse course, LogSecrets secrets, bool has_times);

  void TellLog(std::string_view text, ElapsedTime elapsed);

  [[nodiscard]] AttemptSummary Summarise(const AttemptOutcome& outcome, ElapsedTime elapsed) const;
  void TellEnd(const AttemptSummary& summary);

  // Ends the line that the log's last text has left open, if it has.
  void EndLine();

  // All of the log, without what is secret.
  [[nodiscard]] const std::string& log() const { return log_; }

 private:
  void TellPhase(ElapsedTime elapsed);

  const ReportWriter& report_;
  AlertCourse course_;
  const LogSecrets secrets_;
  const bool has_times_;
  LogText log_text_;
  std::string log_;
  std::string phase_;  // which is to be told when the log's line has ended
};

}  // namespace brantel::host
