#include "host/delivery/delivery_win32.h"

#include <utility>

#include "host/attempt/attempt_win32.h"
#include "host/course/alert_course.h"
#include "host/instances/instance_text.h"
#include "host/journal/journal_path_win32.h"
#include "host/machine/modem_line_win32.h"
#include "host/settings/line_setup.h"
#include "host/system/file_path_win32.h"
#include "host/system/present_time_win32.h"
#include "host/system/rotated_file_win32.h"
#include "host/system/running_process_win32.h"
#include "host/system/unique_text_win32.h"
#include "host/text/letter_case.h"
#include "module/class_descriptions.h"
#include "system/registry_settings_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

std::wstring ExistingFolderOf(const AlertToDeliver& alert) {
  return IsDirectory(alert.folder) ? alert.folder : L"";
}

JournalEntry BeginningOf(const AlertToDeliver& alert, const DeliveryOptions& options) {
  return {.id = ToUtf8(UniqueText()),
          .began = PresentTime(),
          .command = alert.command,
          .class_name = alert.class_name,
          .instance = alert.instance,
          .event = EventText(options.event),
          .machine = ComputerName(),
          .process = GetCurrentProcessId(),
          .decision = alert.decision};
}

// The instance, if it is one of the class that is to send it.
std::optional<Instance> InstanceOf(const AlertToDeliver& alert) {
  const bool is_of_class = alert.file.layout != nullptr &&
                           EqualIgnoringCase(alert.file.layout->class_name, alert.class_name);
  return is_of_class ? alert.file.instance : std::nullopt;
}

LogSecrets SecretsOf(const AlertToDeliver& alert, const DeliveryOptions& options) {
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

// One attempt, from the journal's first words about it to its last.
class Delivery {
 public:
  Delivery(const AlertToDeliver& alert, const DeliveryOptions& options, HANDLE stop,
           DeliveryListener& listener)
      : alert_(alert),
        options_(options),
        stop_(stop),
        listener_(listener),
        line_(LineOf(alert)),
        journal_(JournalPath(options.journal, ExistingFolderOf(alert)),
                 RotatedFile::Durability::kComputer),
        entry_(BeginningOf(alert, options)),
        course_(AlertCourse(alert.class_name, InstanceOf(alert)), SecretsOf(alert, options),
                listener) {}

  DeliveryEnd Run() {
    Note();
    const AttemptOutcome outcome = Try();
    DeliverySummary summary = course_.Summarise(outcome, Elapsed());
    entry_.end = JournaledEnd{.is_delivered = summary.verdict.delivered,
                              .verdict = summary.Sentence(),
                              .result = summary.result,
                              .seconds = summary.seconds,
                              .log = course_.log()};
    // Before anybody is told, so that the journal has every alert of which somebody knows the end.
    Note();
    if (outcome.end != AttemptEnd::kReturned && line_) ReleaseLine();
    return {std::move(entry_), std::move(summary), outcome.fault};
  }

 private:
  [[nodiscard]] ElapsedTime Elapsed() const {
    return std::chrono::duration_cast<ElapsedTime>(std::chrono::steady_clock::now() - start_);
  }

  // That the journal cannot be written is no reason to hold an alert back.
  void Note() const {
    if (const auto error = journal_.Append(JournalLine(entry_))) {
      listener_.OnWarning("the journal " + ToUtf8(journal_.path()) +
                          " cannot be written: " + *error);
    }
  }

  AttemptOutcome Try() {
    const AlertRequest request{.module_file = alert_.module_file,
                               .class_name = alert_.class_name,
                               .instance_file = ToUtf8(alert_.path),
                               .event = options_.event,
                               .variables = options_.variables,
                               .takes_raw_values = options_.takes_raw_values};
    return RunAttempt(request, options_.time_limit, stop_,
                      [&](std::string_view text) { course_.Take(text, Elapsed()); });
  }

  // Makes a modem free on which an alert was ended before it could do so itself.
  void ReleaseLine() const {
    if (HangUpModem(*line_)) return;
    listener_.OnWarning("COM" + std::to_string(line_->port) +
                        " cannot be opened to hang up its modem");
  }

  const AlertToDeliver& alert_;
  const DeliveryOptions& options_;
  const HANDLE stop_;
  DeliveryListener& listener_;
  const std::optional<LineSetup> line_;
  const RotatedFile journal_;
  JournalEntry entry_;
  DeliveryCourse course_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

DeliveryEnd Deliver(const AlertToDeliver& alert, const DeliveryOptions& options, HANDLE stop,
                    DeliveryListener& listener) {
  return Delivery(alert, options, stop, listener).Run();
}

}  // namespace brantel::host
