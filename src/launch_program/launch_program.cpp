#include "launch_program/launch_program.h"

#include "launch_program/launch_program_description.h"
#include "notifier/instance_loading.h"

namespace brantel {

Result LaunchProgram::Send(const InstanceArgument& argument, NotifierHost* host) {
  using namespace launch_program_field;
  if (argument.path.empty()) return kFail;
  if (host == nullptr) return kOk;

  const auto instance = LoadInstanceForAlert(files_, kLaunchProgram.instances, argument, host);
  if (!instance) return kFail;

  std::string arguments = instance->text(kProgramArguments);
  const Result expanded = host->ExpandMessage(arguments, EmptyText::kNull);
  if (Failed(expanded)) return expanded;

  // The file name is deliberately not quoted, so that one text can name a program and its first
  // arguments; the blank stands also before empty arguments.
  const std::string command_line = instance->text(kProgramFilename) + " " + arguments;
  return starter_.Start(command_line, instance->text(kWorkingPath)) ? expanded : kFail;
}

}  // namespace brantel
