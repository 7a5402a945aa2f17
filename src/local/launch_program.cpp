#include "local/launch_program.h"

#include <array>

namespace brantel {
namespace {

constexpr std::array<InstanceField, 3> kFields = {{
    {.name = "program filename"},
    {.name = "working path"},
    {.name = "program arguments"},
}};

}  // namespace

constinit const InstanceLayout LaunchProgram::kLayout = {
    .magic = ParseGuid("ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945"),
    .fields = kFields,
};

Result LaunchProgram::Send(const InstanceArgument& argument, NotifierHost* host) {
  if (argument.path.empty()) return kFail;
  if (host == nullptr) return kOk;

  const auto instance = LoadInstanceForAlert(files_, kLayout, argument, host);
  if (!instance) return kFail;

  std::string arguments = instance->text(kProgramArguments);
  const Result expanded = host->ExpandMessage(arguments);
  if (Failed(expanded)) return expanded;

  // The file name is deliberately not quoted, so that one text can name a program and its first
  // arguments; the blank stands also before empty arguments.
  const std::string command_line = instance->text(kProgramFilename) + " " + arguments;
  return starter_.Start(command_line, instance->text(kWorkingPath)) ? expanded : kFail;
}

}  // namespace brantel
