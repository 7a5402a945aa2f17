#pragma once

#include <string>
#include <string_view>

#include "host/delivery/delivery_course.h"
#include "host/delivery/delivery_listener.h"
#include "host/report/report_writer.h"
#include "host/text/log_text.h"
#include "host/text/text_sink.h"

namespace brantel::host {

// Tells of a delivery while it goes on: its log and its phases, and at the end its verdict.
class DeliveryTeller final : public DeliveryListener {
 public:
  // The report and the sink for warnings must outlive the object. With times each line of the log
  // begins with the seconds that have passed.
  DeliveryTeller(const ReportWriter& report, const TextSink& warnings, bool has_times)
      : report_(report), warnings_(warnings), has_times_(has_times) {}

  void OnLog(std::string_view text, ElapsedTime elapsed) override;
  void OnPhase(std::string_view phase, ElapsedTime elapsed) override;
  void OnWarning(std::string_view warning) override;

  void TellEnd(const DeliverySummary& summary);

  // Ends the line that the log's last text has left open, if it has.
  void EndLine();

 private:
  void TellPhase(ElapsedTime elapsed);

  const ReportWriter& report_;
  const TextSink& warnings_;
  const bool has_times_;
  LogText log_text_;
  std::string phase_;  // which is to be told when the log's line has ended
};

}  // namespace brantel::host
