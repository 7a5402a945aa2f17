#include "host/commands/preview_command.h"

#include <string>
#include <string_view>
#include <vector>

#include "host/commands/command_context_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/instances/instance_text.h"
#include "host/outcome/result_text.h"
#include "host/preview/preview.h"
#include "host/preview/preview_report.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/file_path_win32.h"
#include "instance/instance_files_win32.h"
#include "module/class_descriptions.h"
#include "smtp_mail/message/mail_environment_win32.h"
#include "smtp_mail/network/mail_socket_win32.h"
#include "system/machine_name_win32.h"
#include "system/registry_settings_win32.h"
#include "system/sockets_library_win32.h"
#include "system/windows/ansi_text_win32.h"
#include "system/windows/code_page_win32.h"
#include "system/windows/utf8_text_win32.h"
#include "telephone/riff_files_win32.h"

namespace brantel::host {
namespace {

constexpr TextConversions kTexts = {
    .to_utf8 = FromCodePage,
    .to_code_page = [](std::string_view text) { return ToAnsi(FromUtf8(text)); },
    .utf16_to_utf8 =
        [](std::u16string_view text) { return ToUtf8(std::wstring(text.begin(), text.end())); },
};

Preview PreviewOnThisComputer(const PreviewedAlert& alert) {
  // A key that is not there is not made either.
  RegistrySettings settings{MissingKey::kLeftMissing};
  SystemMailEnvironment mail_environment;
  const SystemMailNetwork mail_network;
  SystemRiffFiles waves;
  return PreviewAlert({.files = disk_instance_files,
                       .settings = settings,
                       .sockets = win_sock,
                       .machine_name = system_machine_name,
                       .mail_environment = mail_environment,
                       .mail_network = mail_network,
                       .waves = waves,
                       .code_page = system_code_page,
                       .texts = kTexts},
                      alert);
}

std::vector<std::string> StoredPasswords(InstanceFile file) {
  file.instance = file.stored;
  return SecretTexts(file);
}

// What `file`, at this full path, holds.
Preview PreviewOf(const PreviewCommand& command, const InstanceFile& file,
                  const std::wstring& path) {
  Preview preview = PreviewOnThisComputer(
      {.notifier_class = *FindClassDescription(file.layout->class_name),
       .instance = {.text = {path.begin(), path.end()}, .path = ToAnsiPath(path)},
       .event = command.event,
       .expand =
           ExpanderFor(command.variables, file.layout->class_name, command.takes_raw_values)});
  if (!command.shows_secrets) HideSecrets(preview, StoredPasswords(file), kTexts);
  return preview;
}

}  // namespace

ExitCode Run(const PreviewCommand& command, const CommandContext& context) {
  const std::wstring path = FullPath(FromUtf8(command.file));
  const InstanceFile file = ReadExistingInstance(path);
  if (!file.instance) throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " " + file.fault);
  const Preview preview = PreviewOf(command, file, path);
  WritePreview(context.report, preview);
  if (Failed(preview.result)) {
    throw CommandFailure(ExitCode::kFailed,
                         ToUtf8(path) + " would fail whatever the far ends answer: " +
                             ResultText(preview.result) + "\n" + LogWords(preview));
  }
  if (!file.fault.empty()) {
    throw CommandFailure(ExitCode::kFailed, ToUtf8(path) + " " + file.fault);
  }
  return ExitCode::kDone;
}

}  // namespace brantel::host
