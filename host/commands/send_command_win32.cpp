#include "host/commands/send_command.h"

#include "host/commands/told_delivery_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

ExitCode Run(const SendCommand& command, const CommandContext& context) {
  const std::wstring path = FullPath(FromUtf8(command.instance_file));
  const AlertToDeliver alert{.command = SendCommand::kSyntax.name,
                             .class_name = command.class_name,
                             .instance = ToUtf8(path),
                             .path = path,
                             .file = path.empty() ? InstanceFile() : ReadInstanceFile(path),
                             .folder = path.substr(0, path.rfind(L'\\')),
                             .module_file = context.module_file};
  return DeliverAndTell(alert, command.options, context);
}

}  // namespace brantel::host
