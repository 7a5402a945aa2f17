#include "host/commands/serve_command.h"

#include <windows.h>

#include <array>

#include "host/commands/command_context_win32.h"
#include "host/commands/watch_board_win32.h"
#include "host/console/console_server_win32.h"
#include "host/console/host_rules.h"
#include "host/console/key_derivation_win32.h"
#include "host/console/password_record.h"
#include "host/instances/instance_file_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/interruption_win32.h"
#include "host/system/unique_text_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

std::string FirstLineOfInput() {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  std::string line;
  char c = '\0';
  DWORD read = 0;
  while (ReadFile(input, &c, 1, &read, nullptr) != FALSE && read == 1 && c != '\n')
    line += c;
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

ExitCode SetPassword(const std::wstring& path, const CommandContext& context) {
  const std::string password = FirstLineOfInput();
  if (password.size() < kShortestPassword) {
    throw CommandFailure(
        ExitCode::kWrongUsage,
        "a password has at least " + std::to_string(kShortestPassword) + " characters");
  }
  std::string salt;
  for (const char c : ToUtf8(UniqueText())) {
    if (c >= '0' && c <= '9') salt += c;
    if (c >= 'A' && c <= 'F') salt += static_cast<char>(c - 'A' + 'a');
  }
  const auto record = PasswordRecord::Make(password, salt, DeriveKey);
  if (!record)
    throw CommandFailure(ExitCode::kFailed, "this system cannot hash passwords (PBKDF2)");
  WriteInstanceFile(path, record->Text());
  context.report.Entry("Wrote the password to " + ToUtf8(path) + ".\n", {{"file", ToUtf8(path)}});
  return ExitCode::kDone;
}

std::optional<std::string> PasswordRecordOf(const std::wstring& path) {
  constexpr std::size_t kMostBytes = 1000;
  if (path.empty()) return std::nullopt;
  if (!FileExists(path)) {
    throw CommandFailure(ExitCode::kFailed,
                         "there is no password file " + ToUtf8(path) + "; --set-password makes it");
  }
  return FileStart(path, kMostBytes);
}

void CheckWhoReachesIt(const ServeCommand& command) {
  if (IsLoopback(command.address) || !command.password_file.empty()) return;
  throw CommandFailure(ExitCode::kWrongUsage, "--listen: others than this computer reach " +
                                                  command.address +
                                                  ", so that it needs --password-file");
}

}  // namespace

ExitCode Run(const ServeCommand& command, const CommandContext& context) {
  const std::wstring password_path =
      command.password_file.empty() ? L"" : FullPath(FromUtf8(command.password_file));
  if (command.sets_password) {
    if (password_path.empty())
      throw CommandFailure(ExitCode::kWrongUsage, "--set-password needs --password-file");
    return SetPassword(password_path, context);
  }
  CheckWhoReachesIt(command);
  const std::wstring directory = ExistingDirectory(FromUtf8(command.directory));
  std::optional<PlanFile> plan;
  if (!command.watch_file.empty()) {
    plan = ReadPlanFile(FromUtf8(command.watch_file));
    RequireRightPlan(*plan, context.errors);
  }
  const Interruption interruption;
  WatchBoard board;
  const ConsoleServer server({.sends = {directory, command.journal, context.module_file},
                              .address = command.address,
                              .port = static_cast<std::uint16_t>(command.port),
                              .further_host_names = command.host_names,
                              .password_record = PasswordRecordOf(password_path),
                              .shows_secrets = command.shows_secrets,
                              .notice = command.notice,
                              .watched = plan ? &board : nullptr});
  context.report.Entry("The console is at " + server.address() + "; Ctrl-C ends it.\n",
                       {{"address", server.address()}});
  if (plan) {
    // Whatever becomes of the console: somebody may have to be alerted.
    RunWatch(*plan, context.module_file, context.report, context.errors, interruption.event(),
             &board);
    return ExitCode::kDone;
  }
  const std::array<HANDLE, 2> ends = {interruption.event(), server.ended()};
  WaitForMultipleObjects(ends.size(), ends.data(), FALSE, INFINITE);
  if (!server.failure().empty()) throw CommandFailure(ExitCode::kFailed, server.failure());
  return ExitCode::kDone;
}

}  // namespace brantel::host
