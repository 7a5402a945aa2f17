#include "host/commands/serve_command.h"

#include <windows.h>

#include <array>
#include <memory>
#include <utility>
#include <vector>

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

std::unique_ptr<ConsoleServer> StartConsole(ConsoleSetup setup, const CommandContext& context) {
  auto server = std::make_unique<ConsoleServer>(std::move(setup));
  context.report.Entry("The console is at " + server->address() + "; Ctrl-C ends it.\n",
                       {{"address", server->address()}});
  return server;
}

ExitCode Serve(ConsoleSetup setup, const CommandContext& context, HANDLE stop) {
  const auto server = StartConsole(std::move(setup), context);
  const std::array<HANDLE, 2> ends = {stop, server->ended()};
  WaitForMultipleObjects(ends.size(), ends.data(), FALSE, INFINITE);
  if (!server->failure().empty()) throw CommandFailure(ExitCode::kFailed, server->failure());
  return ExitCode::kDone;
}

// The console of a watch. That it cannot begin, or fails, is told at once and ends no watch:
// somebody may have to be alerted.
class ConsoleOfWatch final : public WatchView {
 public:
  ConsoleOfWatch(ConsoleSetup setup, const PlanFile& plan, const CommandContext& context)
      : board_(plan.journal), context_(context) {
    setup.watched = &board_;
    try {
      server_ = StartConsole(std::move(setup), context);
    } catch (const CommandFailure& failure) {
      if (failure.exit_code() == ExitCode::kWrongUsage) throw;
      TellFailure(failure.what());
    }
  }

  void Show(std::vector<ItemSnapshot> items) override {
    board_.Show(std::move(items));
    if (!has_failed_ && WaitForSingleObject(server_->ended(), 0) == WAIT_OBJECT_0)
      TellFailure(server_->failure());
  }

  [[nodiscard]] bool has_failed() const { return has_failed_; }

 private:
  void TellFailure(const std::string& words) {
    has_failed_ = true;
    context_.errors.Write(
        "notifyhost: warning: there is no console, and the watch goes on: " + words + "\n");
  }

  WatchBoard board_;
  const CommandContext& context_;
  bool has_failed_ = false;
  std::unique_ptr<ConsoleServer> server_;  // last: it uses the board
};

ExitCode ServeAndWatch(ConsoleSetup setup, const PlanFile& plan, const CommandContext& context,
                       HANDLE stop) {
  ConsoleOfWatch console(std::move(setup), plan, context);
  RunWatch(plan, context.module_file, context.report, context.errors, stop, &console);
  return console.has_failed() ? ExitCode::kFailed : ExitCode::kDone;
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
  ConsoleSetup setup{.sends = {directory, command.journal, context.module_file},
                     .address = command.address,
                     .port = static_cast<std::uint16_t>(command.port),
                     .further_host_names = command.host_names,
                     .password_record = PasswordRecordOf(password_path),
                     .shows_secrets = command.shows_secrets,
                     .notice = command.notice};
  return plan ? ServeAndWatch(std::move(setup), *plan, context, interruption.event())
              : Serve(std::move(setup), context, interruption.event());
}

}  // namespace brantel::host
