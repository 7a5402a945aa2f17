#include "host/commands/fields_command.h"

#include <string>

#include "host/commands/command_context_win32.h"
#include "host/instances/class_fields.h"

namespace brantel::host {

ExitCode Run(const FieldsCommand& command, const CommandContext& context) {
  const ClassDescription& notifier_class = FindDescription(command.class_name);
  context.report.Prose("Fields of " + std::string(notifier_class.instances.class_name) + "\n\n");
  WriteFieldTable(context.report, notifier_class);
  return ExitCode::kDone;
}

}  // namespace brantel::host
