#include "host/commands/alert_delivery_win32.h"

#include <windows.h>

#include <chrono>

#include "host/attempt/alert_teller.h"
#include "host/attempt/attempt_win32.h"
#include "host/instances/instance_text.h"
#include "host/journal/journal_entry.h"
#include "host/journal/journal_history.h"
#include "host/journal/journal_path_win32.h"
#include "host/machine/modem_line_win32.h"
#include "host/settings/line_setup.h"
#include "host/system/event_log_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/present_time_win32.h"
#include "host/system/rotated_file_win32.h"
#include "host/system/running_process_win32.h"
#include "host/system/unique_text_win32.h"
#include "host/text/letter_case.h"
#include "host/text/seconds_text.h"
#include "module/class_descriptions.h"
#include "system/registry_settings_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

std::wstring ExistingFolderOf(const AlertToDeliver& alert) {
  return IsDirectory(alert.folder) ? alert.folder : L"";
}

JournalEntry BeginningOf(const AlertToDeliver& alert, const AlertOptions& options) {
  return {.id = ToUtf8(UniqueText()),
          .began = PresentTime(),
          .command = alert.command,
          .class_name = alert.class_name,
          .instance = alert.instance,
          .event = EventText(options.event),
          .machine = ComputerName(),
          .process = GetCurrentProcessId()};
}

// The instance, if it is one of the class that is to send it.
std::optional<Instance> InstanceOf(const AlertToDeliver& alert) {
  const bool is_of_class = alert.file.layout != nullptr &&
                           EqualIgnoringCase(alert.file.layout->class_name, alert.class_name);
  return is_of_class ? alert.file.instance : std::nullopt;
}

LogSecrets SecretsOf(const AlertToDeliver& alert, const AlertOptions& options) {
  return options.shows_secrets ? LogSecrets() : LogSecrets(SecretTexts(alert.file));
}

// The line that the alert is about to use, where its class has one. Settings may be changed while
// the alert is under way.
std::optional<LineSetup> LineOf(const AlertToDeliver& alert) {
  if (!InstanceOf(alert)) return std::nullopt;
  const ClassDescription& notifier_class = *FindClassDescription(alert.file.layout->class_name);
  if (!notifier_class.profile_field) return std::nullopt;
  return SetupOfLine(notifier_class,
                     ReadProfileOf(registry_settings, notifier_class, *alert.file.stored));
}

// Makes a modem free on which an alert was ended before it could do so itself.
void ReleaseLine(const LineSetup& line, const TextSink& errors) {
  if (HangUpModem(line)) return;
  errors.Write("notifyhost: warning: COM" + std::to_string(line.port) +
               " cannot be opened to hang up its modem\n");
}

// One attempt, from the journal's first words about it to its last.
class Delivery {
 public:
  Delivery(const AlertToDeliver& alert, const AlertOptions& options, const CommandContext& context)
      : alert_(alert),
        options_(options),
        context_(context),
        line_(LineOf(alert)),
        journal_(JournalPath(options.journal, ExistingFolderOf(alert)),
                 RotatedFile::Durability::kComputer),
        entry_(BeginningOf(alert, options)),
        teller_(context.report, AlertCourse(alert.class_name, InstanceOf(alert)),
                SecretsOf(alert, options), options.has_times) {}

  ExitCode Run() {
    Note();
    const AttemptOutcome outcome = Try();
    const AttemptSummary summary = Summarise(outcome);
    entry_.end = JournaledEnd{.is_delivered = summary.verdict.delivered,
                              .verdict = summary.Sentence(),
                              .result = summary.result,
                              .seconds = summary.seconds,
                              .log = teller_.log()};
    // Before anybody is told, so that the journal has every alert of which somebody knows the end.
    Note();
    if (outcome.end != AttemptEnd::kReturned && line_) ReleaseLine(*line_, context_.errors);
    if (outcome.fault) {
      teller_.EndLine();
      throw CommandFailure(outcome.fault->exit_code, outcome.fault->message);
    }
    teller_.TellEnd(summary);
    if (options_.uses_event_log) NoteInEventLog(summary);
    return summary.verdict.delivered ? ExitCode::kDone : ExitCode::kFailed;
  }

 private:
  [[nodiscard]] ElapsedTime Elapsed() const {
    return std::chrono::duration_cast<ElapsedTime>(std::chrono::steady_clock::now() - start_);
  }

  // That the journal cannot be written is no reason to hold an alert back.
  void Note() const {
    if (const auto error = journal_.Append(JournalLine(entry_))) {
      context_.errors.Write("notifyhost: warning: the journal " + ToUtf8(journal_.path()) +
                            " cannot be written: " + *error + "\n");
    }
  }

  void NoteInEventLog(const AttemptSummary& summary) const {
    const auto kind = summary.verdict.delivered ? EventKind::kInformation : EventKind::kError;
    if (!ReportToEventLog(kind, HistoryText(entry_) + "; " + SecondsText(summary.seconds)))
      context_.errors.Write("notifyhost: warning: the event log takes nothing\n");
  }

  AttemptOutcome Try() {
    const Interruption interruption;
    const AlertRequest request{.module_file = context_.module_file,
                               .class_name = alert_.class_name,
                               .instance_file = ToUtf8(alert_.path),
                               .event = options_.event,
                               .variables = options_.variables,
                               .takes_raw_values = options_.takes_raw_values};
    return RunAttempt(request, options_.time_limit, interruption,
                      [&](std::string_view text) { teller_.TellLog(text, Elapsed()); });
  }

  [[nodiscard]] AttemptSummary Summarise(const AttemptOutcome& outcome) const {
    if (!outcome.fault) return teller_.Summarise(outcome, Elapsed());
    AttemptSummary summary{.seconds = std::chrono::duration<double>(Elapsed()).count()};
    summary.verdict.words = "not tried: " + outcome.fault->message;
    return summary;
  }

  const AlertToDeliver& alert_;
  const AlertOptions& options_;
  const CommandContext& context_;
  const std::optional<LineSetup> line_;
  const RotatedFile journal_;
  JournalEntry entry_;
  AlertTeller teller_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

ExitCode DeliverAlert(const AlertToDeliver& alert, const AlertOptions& options,
                      const CommandContext& context) {
  return Delivery(alert, options, context).Run();
}

}  // namespace brantel::host
