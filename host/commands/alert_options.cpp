#include "host/commands/alert_options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <system_error>

#include "host/commands/shared_arguments.h"

namespace brantel::host {
namespace {

constexpr double kShortestLimit = 0.001;
constexpr double kLongestLimit = 86400;  // seconds, a day

void SetTimeLimit(AlertOptions& options, const std::string& text) {
  double seconds = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped_at, error] = std::from_chars(text.data(), end, seconds);
  const bool is_number = error == std::errc() && stopped_at == end;
  // Written so that what is no number at all is out of range, too.
  if (!is_number || !(seconds >= kShortestLimit && seconds <= kLongestLimit)) {
    throw CLI::ValidationError("--timeout",
                               "'" + text + "' is no number of seconds from 0.001 to 86400");
  }
  options.time_limit =
      std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

void DeclareTimeLimit(CLI::App& parser, AlertOptions& options) {
  parser
      .add_option_function<std::string>(
          "--timeout", [&options](const std::string& text) { SetTimeLimit(options, text); },
          "End the alert when it has taken so many seconds, hang\n"
          "up, and leave the port free. Without it: none, and a\n"
          "busy number is dialled for ever. Ctrl-C does the same")
      ->option_text("SECONDS")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

}  // namespace

void DeclareAlertOptions(CLI::App& parser, AlertOptions& options) {
  DeclareEvent(parser, options.event);
  DeclareVariables(parser, options.variables);
  DeclareRawValues(parser, options.takes_raw_values);
  DeclareTimeLimit(parser, options);
  DeclareFlag(parser, "--timestamps", options.has_times,
              "Begin each line of the log with the seconds since the\n"
              "start");
  DeclareJournal(parser, options.journal);
  DeclareFlag(parser, "--event-log", options.uses_event_log,
              "Also put what became of the alert into the event log\n"
              "of Windows");
  DeclareShowSecrets(parser, options.shows_secrets);
}

}  // namespace brantel::host
