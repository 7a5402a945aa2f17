#include "host/watch/alert_attempt_win32.h"

#include <chrono>

#include "host/alert/message_variables.h"
#include "host/attempt/alert_teller.h"
#include "host/attempt/attempt_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/instances/instance_text.h"
#include "host/journal/journal_entry.h"
#include "host/journal/journal_path_win32.h"
#include "host/machine/modem_line_win32.h"
#include "host/settings/line_setup.h"
#include "host/system/present_time_win32.h"
#include "host/system/rotated_file_win32.h"
#include "host/system/running_process_win32.h"
#include "host/system/unique_text_win32.h"
#include "module/class_descriptions.h"
#include "system/registry_settings_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::string_view kAcknowledgedClass = "Voice";

// Nobody listens: the watch tells of the end alone.
class SilentSink final : public TextSink {
 public:
  void Write(std::string_view) const override {}
};

std::optional<LineSetup> LineOf(const InstanceFile& file) {
  if (file.layout == nullptr || !file.stored) return std::nullopt;
  const ClassDescription& notifier_class = *FindClassDescription(file.layout->class_name);
  if (!notifier_class.profile_field) return std::nullopt;
  return SetupOfLine(notifier_class,
                     ReadProfileOf(registry_settings, notifier_class, *file.stored));
}

// One attempt, from the journal's first words about it to its last.
class Attempt {
 public:
  Attempt(const AlertRoute& route, const AttemptOrder& order)
      : order_(order),
        path_(route.instances + L"\\" + FromUtf8(order.decision.instance)),
        file_(ReadInstanceFile(path_)),
        class_name_(file_.layout == nullptr ? "" : file_.layout->class_name),
        journal_(JournalPath("", route.instances), RotatedFile::Durability::kComputer),
        report_(silence_, ReportForm::kText, false),
        teller_(report_, AlertCourse(class_name_, file_.instance), LogSecrets(SecretTexts(file_)),
                false),
        entry_{.id = ToUtf8(UniqueText()),
               .began = PresentTime(),
               .command = "watch",
               .class_name = class_name_,
               .instance = ToUtf8(path_),
               .event = EventText(order.decision.event),
               .machine = ComputerName(),
               .process = GetCurrentProcessId(),
               .decision = route.watch + "#" + std::to_string(order.decision.id)} {}

  AttemptResult Run(const AlertRoute& route, const Interruption& interruption) {
    if (file_.layout == nullptr) return {AlertEnd::kFailed, false, InstanceFault()};
    Note();
    const AttemptOutcome outcome = Try(route, interruption);
    if (outcome.end != AttemptEnd::kReturned) {
      if (const auto line = LineOf(file_)) HangUpModem(*line);
    }
    AttemptSummary summary = teller_.Summarise(outcome, Elapsed());
    if (outcome.fault) summary.verdict.words = "not tried: " + outcome.fault->message;
    entry_.end = JournaledEnd{.is_delivered = summary.verdict.delivered,
                              .verdict = summary.Sentence(),
                              .result = summary.result,
                              .seconds = summary.seconds,
                              .log = teller_.log()};
    Note();
    return ResultOf(outcome, summary);
  }

 private:
  [[nodiscard]] std::string InstanceFault() const {
    return ToUtf8(path_) + " " + (file_.fault.empty() ? "is no instance" : file_.fault);
  }

  [[nodiscard]] ElapsedTime Elapsed() const {
    return std::chrono::duration_cast<ElapsedTime>(std::chrono::steady_clock::now() - start_);
  }

  // That it cannot be written holds no alert back; the watch's own journal says enough.
  void Note() const { (void)journal_.Append(JournalLine(entry_)); }

  AttemptOutcome Try(const AlertRoute& route, const Interruption& interruption) {
    AlertRequest request{.module_file = route.module_file,
                         .class_name = class_name_,
                         .instance_file = ToUtf8(path_),
                         .event = order_.decision.event};
    for (const std::string& variable : order_.decision.variables)
      request.variables.Assign(variable);
    return RunAttempt(request, order_.time_limit, interruption,
                      [&](std::string_view text) { teller_.TellLog(text, Elapsed()); });
  }

  // Where Send gave no answer, what it was doing may have been done.
  [[nodiscard]] AttemptResult ResultOf(const AttemptOutcome& outcome,
                                       const AttemptSummary& summary) const {
    if (summary.verdict.delivered)
      return {AlertEnd::kDelivered, class_name_ == kAcknowledgedClass, summary.Sentence()};
    const bool is_known = outcome.result || outcome.fault;
    return {is_known ? AlertEnd::kFailed : AlertEnd::kUncertain, false, summary.Sentence()};
  }

  const AttemptOrder& order_;
  const std::wstring path_;
  const InstanceFile file_;
  const std::string class_name_;
  const RotatedFile journal_;
  const SilentSink silence_;
  const ReportWriter report_;
  AlertTeller teller_;
  JournalEntry entry_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

std::vector<std::string> ResourcesOf(const std::wstring& folder, const std::string& instance) {
  const InstanceFile file = ReadInstanceFile(folder + L"\\" + FromUtf8(instance));
  if (file.layout == nullptr) return {instance};
  std::vector<std::string> resources = {std::string(file.layout->class_name)};
  if (const auto line = LineOf(file)) resources.push_back("COM" + std::to_string(line->port));
  return resources;
}

AttemptResult AttemptAlert(const AlertRoute& route, const AttemptOrder& order,
                           const Interruption& interruption) {
  try {
    return Attempt(route, order).Run(route, interruption);
  } catch (const std::exception& error) {
    return {AlertEnd::kFailed, false, error.what()};
  }
}

}  // namespace brantel::host
