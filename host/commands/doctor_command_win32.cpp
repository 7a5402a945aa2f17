#include "host/commands/doctor_command.h"

#include <array>
#include <string>
#include <vector>

#include "host/checks/diagnosis.h"
#include "host/commands/command_context_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/machine/system_machine_win32.h"
#include "host/system/file_path_win32.h"
#include "module/class_descriptions.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// Tells of each diagnosis as soon as it is there, and sums up.
class Round {
 public:
  Round(const DoctorCommand& command, const CommandContext& context)
      : report_(context.report),
        machine_(context.module_file),
        reach_(command.goes_online ? Reach::kOnline : Reach::kOffline) {}

  void LookAtClass(const ClassDescription& notifier_class) {
    Tell(DiagnoseClass(notifier_class, machine_, reach_));
  }

  void LookAtInstance(const InstanceFile& file) { Tell(DiagnoseInstance(file, machine_, reach_)); }

  [[nodiscard]] ExitCode SumUp() const {
    report_.Prose("\n" + std::to_string(failed_) + " failed, " + std::to_string(warned_) +
                  " with warnings, " + std::to_string(sound_) + " ok\n");
    return failed_ > 0 ? ExitCode::kFailed : ExitCode::kDone;
  }

 private:
  void Tell(const Diagnosis& diagnosis) {
    WriteDiagnosis(report_, diagnosis);
    switch (diagnosis.severity()) {
      case Severity::kOk:
        ++sound_;
        break;
      case Severity::kWarning:
        ++warned_;
        break;
      case Severity::kFailure:
        ++failed_;
        break;
    }
  }

  const ReportWriter& report_;
  SystemMachine machine_;
  Reach reach_;
  int failed_ = 0;
  int warned_ = 0;
  int sound_ = 0;
};

ExitCode LookAtFile(Round& round, const std::wstring& path) {
  const InstanceFile file = ReadExistingInstance(path);
  if (file.layout != nullptr) round.LookAtClass(*FindClassDescription(file.layout->class_name));
  round.LookAtInstance(file);
  return round.SumUp();
}

ExitCode LookAtDirectory(Round& round, const std::wstring& directory) {
  const auto files = ReadInstanceDirectory(directory);
  for (const InstanceFile& file : files)
    round.LookAtInstance(file);
  const ExitCode outcome = round.SumUp();
  return files.empty() && outcome == ExitCode::kDone ? ExitCode::kNothingMatched : outcome;
}

}  // namespace

ExitCode Run(const DoctorCommand& command, const CommandContext& context) {
  Round round(command, context);
  const std::wstring path = FullPath(FromUtf8(command.path));
  if (!path.empty() && !IsDirectory(path)) return LookAtFile(round, path);
  for (const ClassDescription* notifier_class : ClassDescriptions())
    round.LookAtClass(*notifier_class);
  return path.empty() ? round.SumUp() : LookAtDirectory(round, ExistingDirectory(path));
}

}  // namespace brantel::host
