#include "host/commands/written_instance_win32.h"

#include "host/checks/diagnosis.h"
#include "host/instances/instance_file_win32.h"
#include "host/machine/system_machine_win32.h"
#include "host/outcome/command_failure.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

void CheckValues(const ClassDescription& notifier_class, const Instance& stored,
                 const std::string& consequence, const CommandContext& context) {
  SystemMachine machine(context.module_file);
  const auto findings = CheckValues(notifier_class, stored, machine);
  std::string failures;
  for (const Finding& finding : findings) {
    if (finding.severity == Severity::kFailure) failures += FindingText(finding) + "\n";
  }
  if (!failures.empty()) throw CommandFailure(ExitCode::kWrongUsage, failures + consequence);
  for (const Finding& finding : findings)
    context.errors.Write("notifyhost: warning: " + FindingText(finding) + "\n");
}

void CheckBeforeWriting(const ClassDescription& notifier_class, const Instance& stored,
                        const CommandContext& context) {
  CheckValues(notifier_class, stored, "Nothing is written; --no-check writes it all the same",
              context);
}

void WriteAndTell(const ClassDescription& notifier_class, const Instance& stored,
                  const std::wstring& path, const CommandContext& context) {
  const InstanceLayout& layout = notifier_class.instances;
  WriteInstanceFile(path, EncodeInstance(layout, stored));
  context.report.Entry(
      "Wrote the " + std::string(layout.class_name) + " instance " + ToUtf8(path) + ".\n",
      {{"class", layout.class_name}, {"file", ToUtf8(path)}});
}

}  // namespace brantel::host
