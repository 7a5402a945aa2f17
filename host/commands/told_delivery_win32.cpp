#include "host/commands/told_delivery_win32.h"

#include <string>

#include "host/delivery/delivery_teller.h"
#include "host/journal/journal_history.h"
#include "host/system/event_log_win32.h"
#include "host/system/interruption_win32.h"
#include "host/text/seconds_text.h"

namespace brantel::host {
namespace {

void NoteInEventLog(const DeliveryEnd& end, DeliveryListener& listener) {
  const auto kind = end.summary.verdict.delivered ? EventKind::kInformation : EventKind::kError;
  const std::string words = HistoryText(end.entry) + "; " + SecondsText(end.summary.seconds);
  if (!ReportToEventLog(kind, words)) listener.OnWarning("the event log takes nothing");
}

}  // namespace

ExitCode DeliverAndTell(const AlertToDeliver& alert, const AlertOptions& options,
                        const CommandContext& context) {
  const Interruption interruption;
  DeliveryTeller teller(context.report, context.errors, options.has_times);
  const DeliveryEnd end = Deliver(alert, options, interruption.event(), teller);
  if (end.fault) {
    teller.EndLine();
    throw CommandFailure(end.fault->exit_code, end.fault->message);
  }
  teller.TellEnd(end.summary);
  if (options.uses_event_log) NoteInEventLog(end, teller);
  return end.summary.verdict.delivered ? ExitCode::kDone : ExitCode::kFailed;
}

}  // namespace brantel::host
