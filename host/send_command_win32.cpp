#include "host/send_command_win32.h"

#include <string>

#include "framework/bstr_win32.h"
#include "framework/com_pointer_win32.h"
#include "framework/notifier_contract.h"
#include "framework/utf8_text_win32.h"
#include "host/created_notifier_win32.h"
#include "host/file_path_win32.h"
#include "host/host_callback_win32.h"
#include "host/result_text.h"

namespace brantel::host {

ExitCode Run(const SendCommand& command, const Invocation& invocation, const OutputStream& output) {
  const CreatedNotifier created = CreateNotifier(command.class_name, invocation);
  const auto callback =
      ComPointer<HostCallback>::Adopt(new HostCallback(command.event, command.variables, output));
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
    output.Write("Failed: " + ResultText(sent) + "\n");
    return ExitCode::kFailed;
  }
  output.Write(sent == S_OK ? "Delivered.\n" : "Delivered: " + ResultText(sent) + "\n");
  return ExitCode::kDone;
}

}  // namespace brantel::host
