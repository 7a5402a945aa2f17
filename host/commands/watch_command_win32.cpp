#include "host/commands/watch_command.h"

#include <windows.h>

#include <array>
#include <map>
#include <set>

#include "host/checks/diagnosis.h"
#include "host/commands/command_context_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/machine/system_machine_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/interruption_win32.h"
#include "host/watch/plan_check.h"
#include "host/watch/watch_run_win32.h"
#include "host/watch/watch_words.h"
#include "module/class_descriptions.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

std::string UserName() {
  std::array<wchar_t, 257> name{};
  DWORD size = name.size();
  return GetUserNameW(name.data(), &size) != FALSE ? ToUtf8(name.data()) : "somebody";
}

// By the rules of the command doctor, offline, and whether they fit the items.
bool CheckInstances(const PlanFile& file, const CommandContext& context) {
  std::set<std::string> names;
  for (const AlertRule& rule : file.reading.plan.alerts)
    names.insert(rule.instances.begin(), rule.instances.end());
  SystemMachine machine(context.module_file);
  std::map<std::string, std::string> classes;  // of the instances
  std::set<std::string> told_classes;
  bool is_sound = true;
  const auto tell = [&](const Diagnosis& diagnosis) {
    WriteDiagnosis(context.report, diagnosis);
    is_sound = is_sound && diagnosis.severity() != Severity::kFailure;
  };
  for (const std::string& name : names) {
    const InstanceFile instance = ReadInstanceFile(file.instances + L"\\" + FromUtf8(name));
    const Diagnosis diagnosis = DiagnoseInstance(instance, machine, Reach::kOffline);
    classes[name] = diagnosis.class_name;
    if (instance.layout != nullptr && told_classes.insert(diagnosis.class_name).second)
      tell(DiagnoseClass(*FindClassDescription(diagnosis.class_name), machine, Reach::kOffline));
    tell(diagnosis);
  }
  for (const Diagnosis& diagnosis : DiagnoseItems(file.reading.plan, classes))
    tell(diagnosis);
  return is_sound;
}

ExitCode Check(const PlanFile& file, const CommandContext& context) {
  const bool is_sound = CheckInstances(file, context);
  const std::size_t items = file.reading.plan.items.size();
  const std::size_t alerts = file.reading.plan.alerts.size();
  context.report.Entry(std::to_string(items) + " items, " + std::to_string(alerts) + " alerts\n",
                       {{"items", items}, {"alerts", alerts}});
  return is_sound ? ExitCode::kDone : ExitCode::kFailed;
}

ExitCode TellStatus(const PlanFile& file, const CommandContext& context) {
  TellItems(context.report, ItemsByJournal(file));
  TellOpenAlerts(context.report, MemoryByJournal(file));
  return ExitCode::kDone;
}

ExitCode Acknowledge(const PlanFile& file, const WatchCommand& command,
                     const CommandContext& context) {
  const std::string& item = command.acknowledged;
  if (!PlaceOfItem(file.reading.plan, item))
    throw CommandFailure(ExitCode::kWrongUsage, "'" + item + "' is not an item of the plan");
  const std::string by = command.by.empty() ? UserName() : command.by;
  if (AcknowledgeInJournal(file.journal, item, by)) {
    context.report.Entry(item + " is acknowledged\n", {{"item", item}, {"by", by}});
    return ExitCode::kDone;
  }
  context.errors.Write("notifyhost: " + item + " is not down, or has been acknowledged\n");
  return ExitCode::kNothingMatched;
}

}  // namespace

ExitCode Run(const WatchCommand& command, const CommandContext& context) {
  const PlanFile file = ReadPlanFile(FromUtf8(command.file));
  RequireRightPlan(file, context.errors);
  if (command.is_check) return Check(file, context);
  if (command.is_status) return TellStatus(file, context);
  if (!command.acknowledged.empty()) return Acknowledge(file, command, context);
  const Interruption interruption;
  RunWatch(file, context.module_file, context.report, context.errors, interruption.event());
  return ExitCode::kDone;
}

}  // namespace brantel::host
