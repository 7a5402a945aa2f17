#include "host/commands/history_command.h"

#include "host/commands/command_context_win32.h"
#include "host/journal/journal_history.h"
#include "host/journal/journal_path_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/interruption_win32.h"
#include "host/system/present_time_win32.h"
#include "host/system/rotated_file_win32.h"
#include "host/system/running_process_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr DWORD kPollMilliseconds = 500;

std::wstring FolderOf(const HistoryCommand& command) {
  return command.directory.empty() ? std::wstring()
                                   : ExistingDirectory(FromUtf8(command.directory));
}

std::optional<PointInTime> Since(const HistoryCommand& command) {
  if (command.since.empty()) return std::nullopt;
  const auto since = ParsePastTime(command.since, PresentTime());
  if (!since) {
    throw CommandFailure(ExitCode::kWrongUsage,
                         "--since: '" + command.since +
                             "' is no time; it takes an age such as 90s, 30m, 12h or 7d, a day "
                             "such as 2026-11-22, or a minute such as 2026-11-22T03:12");
  }
  return since;
}

bool RunsStill(const JournalEntry& entry) {
  return entry.machine == ComputerName() && IsRunning(entry.process, entry.began);
}

}  // namespace

ExitCode Run(const HistoryCommand& command, const CommandContext& context) {
  const RotatedFile journal(JournalPath(command.journal, FolderOf(command)),
                            RotatedFile::Durability::kComputer);
  JournalHistory history(context.report, {command.is_failed_only, Since(command)}, RunsStill);
  history.Tell(ReadJournal(journal.Read()));
  if (command.follows) {
    const Interruption interruption;
    while (WaitForSingleObject(interruption.event(), kPollMilliseconds) == WAIT_TIMEOUT)
      history.Tell(ReadJournal(journal.Read()));
  }
  return history.has_told() ? ExitCode::kDone : ExitCode::kNothingMatched;
}

}  // namespace brantel::host
