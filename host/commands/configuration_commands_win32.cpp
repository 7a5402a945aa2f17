#include "host/commands/configuration_commands.h"

#include <windows.h>

#include <string>
#include <string_view>

#include "brantel/notifier_contract.h"
#include "host/alert/host_callback_win32.h"
#include "host/commands/command_context_win32.h"
#include "host/module/created_notifier_win32.h"
#include "host/outcome/result_text.h"
#include "host/system/file_path_win32.h"
#include "host/text/control_characters.h"
#include "host/text/log_text.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/com_pointer_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

ComPointer<INotifierConfig> ConfigurationOf(const CreatedNotifier& created,
                                            const std::string& class_name) {
  ComPointer<INotifierConfig> configuration;
  const HRESULT result =
      created.notifier->QueryInterface(IID_INotifierConfig, configuration.put_void());
  if (FAILED(result)) {
    throw CommandFailure(ExitCode::kFailed, class_name + " has no dialogs: " + ResultText(result));
  }
  return configuration;
}

// A dialog of INotifierConfig.
using Dialog = HRESULT (STDMETHODCALLTYPE INotifierConfig::*)(BSTR directory, BSTR* name);

// Runs the dialog, prints the log that comes meanwhile, and returns the dialog's own result.
HRESULT RunDialog(const CreatedNotifier& created, INotifierConfig& configuration, Dialog dialog,
                  const std::wstring& directory, Bstr& name, const ReportWriter& report) {
  LogText log;
  const auto callback = ComPointer<HostCallback>::Adopt(
      new HostCallback(kNoEvent, PlainExpander({}), [&](std::string_view text) {
        report.Entry(log.Render(text), {{"log", text}});
      }));
  // A class that cannot deliver on this machine can still be configured here.
  const bool is_bound = SUCCEEDED(created.notifier->Initialize(callback.get()));
  const Bstr directory_argument(directory);
  const HRESULT result = (configuration.*dialog)(directory_argument.get(), name.in_out());
  if (is_bound) created.notifier->Shutdown();
  if (!log.at_line_start()) report.Prose("\n");
  return result;
}

// `done` is what has become of the instance where all went well.
ExitCode Report(HRESULT result, const std::string& done, const Bstr& name,
                const ReportWriter& report) {
  if (result == S_OK) {
    const std::string given = ToUtf8(name.view());
    report.Entry(done + " " + ShowControlCharacters(given) + ".\n",
                 {{"outcome", done}, {"name", given}});
    return ExitCode::kDone;
  }
  const bool is_cancelled = result == E_FAIL;
  report.Entry(
      is_cancelled ? "Cancelled.\n" : "Failed: " + ResultText(result) + "\n",
      {{"outcome", is_cancelled ? "Cancelled" : "Failed"}, {"result", ResultText(result)}});
  return ExitCode::kFailed;
}

}  // namespace

ExitCode Run(const AddCommand& command, const CommandContext& context) {
  const std::wstring directory = ExistingDirectory(FromUtf8(command.directory));
  const CreatedNotifier created = CreateNotifier(command.class_name, context.module_file);
  const auto configuration = ConfigurationOf(created, command.class_name);
  Bstr name;
  const HRESULT result = RunDialog(created, *configuration.get(), &INotifierConfig::AddInstance,
                                   directory, name, context.report);
  return Report(result, "Added", name, context.report);
}

ExitCode Run(const EditCommand& command, const CommandContext& context) {
  const std::wstring directory = ExistingDirectory(FromUtf8(command.directory));
  const CreatedNotifier created = CreateNotifier(command.class_name, context.module_file);
  const auto configuration = ConfigurationOf(created, command.class_name);
  Bstr name(FromUtf8(command.name));
  const HRESULT result = RunDialog(created, *configuration.get(), &INotifierConfig::EditInstance,
                                   directory, name, context.report);
  return Report(result, "Saved", name, context.report);
}

}  // namespace brantel::host
