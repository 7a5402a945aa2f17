#include "host/commands/send_command.h"

#include <string>

#include "host/alert/host_callback_win32.h"
#include "host/commands/command_context_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/instances/instance_text.h"
#include "host/module/created_notifier_win32.h"
#include "host/outcome/result_text.h"
#include "host/system/file_path_win32.h"
#include "notifier/notifier_contract.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/com_pointer_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

namespace {

// What is secret in the instance, if it can be read and nothing of it is to be shown.
LogSecrets SecretsOf(const SendCommand& command) {
  if (command.shows_secrets || command.instance_file.empty()) return {};
  return LogSecrets(SecretTexts(ReadInstanceFile(FullPath(FromUtf8(command.instance_file)))));
}

}  // namespace

ExitCode Run(const SendCommand& command, const CommandContext& context) {
  const CreatedNotifier created = CreateNotifier(command.class_name, context.module_file);
  const auto callback = ComPointer<HostCallback>::Adopt(
      new HostCallback(command.event, command.variables, context.output, SecretsOf(command)));
  const HRESULT initialised = created.notifier->Initialize(callback.get());
  if (FAILED(initialised)) {
    throw CommandFailure(ExitCode::kFailed, command.class_name + " could not be initialised: " +
                                                ResultText(initialised));
  }
  const Bstr instance(FullPath(FromUtf8(command.instance_file)));
  const HRESULT sent = created.notifier->Send(instance.get());
  created.notifier->Shutdown();

  callback->FinishLog();
  if (FAILED(sent)) {
    context.output.Write("Failed: " + ResultText(sent) + "\n");
    return ExitCode::kFailed;
  }
  context.output.Write(sent == S_OK ? "Delivered.\n" : "Delivered: " + ResultText(sent) + "\n");
  return ExitCode::kDone;
}

}  // namespace brantel::host
