// The host's command line: whatever the arguments are, they are a command, a request for help or a
// wrong usage that says where help is, and a command that is written down again is read the same.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "host/command_line.h"
#include "text/text_end.h"

namespace brantel::host {
namespace {

using Arguments = std::vector<std::string>;

struct GivenFlag {
  const char* name;
  bool is_given;
};

Arguments With(Arguments arguments, std::initializer_list<GivenFlag> flags) {
  for (const GivenFlag& flag : flags) {
    if (flag.is_given) arguments.emplace_back(flag.name);
  }
  return arguments;
}

Arguments WithValues(Arguments arguments, const std::vector<FieldValue>& values) {
  for (const FieldValue& value : values)
    arguments.push_back(value.field + "=" + value.value);
  return arguments;
}

// Unless it has no value.
void AppendOption(Arguments& arguments, const char* name, const std::string& value) {
  if (!value.empty()) arguments.push_back(name + ("=" + value));
}

void AppendEvent(Arguments& arguments, const AlertEvent& event, const MessageVariables& variables) {
  const auto& word = event.trigger_word;
  AppendOption(arguments, "--event", word ? std::to_string(*word) : "none");
  for (const std::string& assignment : variables.assignments())
    AppendOption(arguments, "--set", assignment);
}

Arguments WithOptions(Arguments arguments, const AlertOptions& options) {
  arguments = With(std::move(arguments), {{"--raw-values", options.takes_raw_values},
                                          {"--timestamps", options.has_times},
                                          {"--show-secrets", options.shows_secrets},
                                          {"--event-log", options.uses_event_log}});
  AppendEvent(arguments, options.event, options.variables);
  if (options.time_limit) {
    const std::string milliseconds = std::to_string(1000 + options.time_limit->count() % 1000);
    AppendOption(arguments, "--timeout",
                 std::to_string(options.time_limit->count() / 1000) + "." + milliseconds.substr(1));
  }
  AppendOption(arguments, "--journal", options.journal);
  return arguments;
}

Arguments OfSettings(const char* action, const SettingsPlace& place, bool is_unchecked = false) {
  Arguments arguments = With({"settings", action, "--profile", std::to_string(place.profile)},
                             {{"--no-check", is_unchecked}});
  arguments.insert(arguments.end(), {"--", place.class_name});
  return arguments;
}

// Writes a command down: its name and options, the mark behind which everything is an argument, and
// those.
struct Writer {
  Arguments operator()(const ClassesCommand&) const { return {"classes"}; }
  Arguments operator()(const RegisterCommand&) const { return {"register"}; }
  Arguments operator()(const UnregisterCommand& command) const {
    return With({"unregister"}, {{"--force", command.takes_any_copy}});
  }
  Arguments operator()(const StatusCommand&) const { return {"status"}; }
  Arguments operator()(const PortsCommand&) const { return {"ports"}; }
  Arguments operator()(const DoctorCommand& command) const {
    Arguments arguments = With({"doctor"}, {{"--online", command.goes_online}});
    if (!command.path.empty()) arguments.insert(arguments.end(), {"--", command.path});
    return arguments;
  }
  Arguments operator()(const ConformanceCommand& command) const {
    return {"conformance", "--", command.file};
  }
  Arguments operator()(const SendCommand& command) const {
    Arguments arguments = WithOptions({"send"}, command.options);
    arguments.insert(arguments.end(), {"--", command.class_name, command.instance_file});
    return arguments;
  }
  Arguments operator()(const PreviewCommand& command) const {
    Arguments arguments = With({"preview"}, {{"--raw-values", command.takes_raw_values},
                                             {"--show-secrets", command.shows_secrets}});
    AppendEvent(arguments, command.event, command.variables);
    arguments.insert(arguments.end(), {"--", command.file});
    return arguments;
  }
  Arguments operator()(const TestCommand& command) const {
    Arguments arguments =
        WithOptions(With({"test"}, {{"--no-check", command.is_unchecked}}), command.options);
    arguments.insert(arguments.end(), {"--", command.class_name});
    return WithValues(std::move(arguments), command.values);
  }
  Arguments operator()(const HistoryCommand& command) const {
    Arguments arguments =
        With({"history"}, {{"--failed", command.is_failed_only}, {"--follow", command.follows}});
    AppendOption(arguments, "--since", command.since);
    AppendOption(arguments, "--journal", command.journal);
    if (!command.directory.empty()) arguments.insert(arguments.end(), {"--", command.directory});
    return arguments;
  }
  Arguments operator()(const AddCommand& command) const {
    return {"add", "--", command.class_name, command.directory};
  }
  Arguments operator()(const EditCommand& command) const {
    return {"edit", "--", command.class_name, command.directory, command.name};
  }
  Arguments operator()(const InstancesCommand& command) const {
    Arguments arguments = With({"instances"}, {{"--show-secrets", command.shows_secrets}});
    arguments.insert(arguments.end(), {"--", command.directory});
    return arguments;
  }
  Arguments operator()(const ShowCommand& command) const {
    Arguments arguments = With({"show"}, {{"--show-secrets", command.shows_secrets}});
    arguments.insert(arguments.end(), {"--", command.file});
    return arguments;
  }
  Arguments operator()(const NewCommand& command) const {
    Arguments arguments =
        With({"new"}, {{"--force", command.replaces}, {"--no-check", command.is_unchecked}});
    arguments.insert(arguments.end(), {"--", command.class_name, command.file});
    return WithValues(std::move(arguments), command.values);
  }
  Arguments operator()(const SetCommand& command) const {
    Arguments arguments = With({"set"}, {{"--no-check", command.is_unchecked}});
    arguments.insert(arguments.end(), {"--", command.file});
    return WithValues(std::move(arguments), command.values);
  }
  Arguments operator()(const SettingsListCommand& command) const {
    return OfSettings("list", command.place);
  }
  Arguments operator()(const SettingsGetCommand& command) const {
    Arguments arguments = OfSettings("get", command.place);
    arguments.push_back(command.name);
    return arguments;
  }
  Arguments operator()(const SettingsSetCommand& command) const {
    return WithValues(OfSettings("set", command.place, command.is_unchecked), command.values);
  }
  Arguments operator()(const SettingsResetCommand& command) const {
    Arguments arguments = OfSettings("reset", command.place);
    arguments.insert(arguments.end(), command.names.begin(), command.names.end());
    return arguments;
  }
  Arguments operator()(const SettingsExportCommand& command) const {
    return OfSettings("export", command.place);
  }
  Arguments operator()(const SettingsImportCommand& command) const {
    Arguments arguments = OfSettings("import", command.place, command.is_unchecked);
    arguments.push_back(command.file);
    return arguments;
  }
  Arguments operator()(const FieldsCommand& command) const {
    return {"fields", "--", command.class_name};
  }
  Arguments operator()(const WatchCommand& command) const {
    Arguments arguments =
        With({"watch"}, {{"--check", command.is_check}, {"--status", command.is_status}});
    AppendOption(arguments, "--acknowledge", command.acknowledged);
    AppendOption(arguments, "--by", command.by);
    arguments.insert(arguments.end(), {"--", command.file});
    return arguments;
  }
  Arguments operator()(const ServeCommand& command) const {
    Arguments arguments = With({"serve"}, {{"--set-password", command.sets_password},
                                           {"--show-secrets", command.shows_secrets}});
    AppendOption(arguments, "--port", std::to_string(command.port));
    AppendOption(arguments, "--listen", command.address);
    for (const std::string& name : command.host_names)
      AppendOption(arguments, "--host", name);
    AppendOption(arguments, "--password-file", command.password_file);
    AppendOption(arguments, "--notice", command.notice);
    AppendOption(arguments, "--journal", command.journal);
    AppendOption(arguments, "--watch", command.watch_file);
    arguments.insert(arguments.end(), {"--", command.directory});
    return arguments;
  }
  Arguments operator()(const ServiceInstallCommand& command) const {
    return {"service", "install", "--", command.file};
  }
  Arguments operator()(const ServiceRemoveCommand&) const { return {"service", "remove"}; }
  Arguments operator()(const ServiceStartCommand&) const { return {"service", "start"}; }
  Arguments operator()(const ServiceStopCommand&) const { return {"service", "stop"}; }
  Arguments operator()(const ServiceRunCommand& command) const {
    return {"service", "run", "--", command.file};
  }
};

Arguments Written(const Invocation& invocation) {
  Arguments arguments = std::visit(Writer(), invocation.command);
  if (invocation.module_file) {
    arguments.insert(arguments.begin(), "--module=" + *invocation.module_file);
  }
  if (invocation.log_file)
    arguments.insert(std::ranges::find(arguments, "--"), "--log-file=" + *invocation.log_file);
  if (invocation.report_form == ReportForm::kJson)
    arguments.insert(std::ranges::find(arguments, "--"), "--json");
  return arguments;
}

struct Checker {
  void operator()(const UsageError& error) const {
    Require(error.text.starts_with("notifyhost: ") && error.text.ends_with(" for help.\n"));
  }
  void operator()(const HelpRequest& help) const {
    Require(help.text.find("\nUsage: notifyhost ") != std::string::npos ||
            help.text.starts_with("notifyhost "));
  }
  void operator()(const Invocation& invocation) const {
    const Arguments arguments = Written(invocation);
    const auto again = ParseCommandLine(arguments);
    const auto* const read = std::get_if<Invocation>(&again);
    Require(read != nullptr && Written(*read) == arguments);
  }
};

// Behind the mark any text is a file's name, even one that looks like an option.
void CheckFileName(const std::string& name) {
  const auto parsed = ParseCommandLine({"show", "--", name});
  const auto* const read = std::get_if<Invocation>(&parsed);
  Require(read != nullptr && std::get<ShowCommand>(read->command).file == name);
}

}  // namespace
}  // namespace brantel::host

// The arguments, with vertical tabs between. The system gives none with a NUL in it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  host::Arguments arguments;
  while (!input.AtEnd())
    arguments.emplace_back(UpToNul(input.Field()));
  if (arguments.size() == 1 && !arguments.front().empty()) host::CheckFileName(arguments.front());
  std::visit(host::Checker(), host::ParseCommandLine(arguments));
  return 0;
}
