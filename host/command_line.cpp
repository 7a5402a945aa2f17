#include "host/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "host/commands/completion_command.h"
#include "host/commands/shared_arguments.h"
#include "host/completion/completion_script.h"
#include "host/text/name_list.h"
#include "host/text/nearest_name.h"
#include "host/text/version.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

constexpr const char* kProgram = "notifyhost";
constexpr const char* kModuleOption = "--module";
constexpr const char* kJsonOption = "--json";
constexpr const char* kLogFileOption = "--log-file";

// Commands that have a common first word.
struct CommandGroup {
  const char* name;
  const char* summary;
};
constexpr std::array kGroups = {
    CommandGroup{"settings", "Show and change the settings of ports and modems"},
    CommandGroup{"service", "Have Windows run a watch"}};

template <typename Options, typename Chosen>
void Declare(CLI::App& parser, Chosen& chosen) {
  const auto options = std::make_shared<Options>();
  DeclareArguments(parser, *options);
  parser.callback([options, &chosen] { chosen = *options; });
}

struct KnownCommand {
  const CommandSyntax* syntax;
  // Makes the parser of this command choose it.
  void (*declare)(CLI::App& parser, Command& chosen);
};

template <typename... Commands>
constexpr auto CommandsOf(std::type_identity<std::variant<Commands...>>) {
  return std::array{KnownCommand{&Commands::kSyntax, Declare<Commands, Command>}...};
}

constexpr std::array kCommands = CommandsOf(std::type_identity<Command>());

std::vector<const CLI::Option*> Positionals(const CLI::App& parser) {
  return parser.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

// Whether it may be given any number of times.
bool TakesMany(const CLI::Option& positional) {
  return positional.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
}

// The policy for too many values also says whether there has to be one: that of a parser which has
// not been told otherwise is to refuse.
bool IsOptional(const CLI::Option& positional) {
  return positional.get_multi_option_policy() != CLI::MultiOptionPolicy::Throw;
}

// A command with its group, such as "settings set"; nothing for the whole program.
std::string FullName(const CLI::App& parser) {
  if (parser.get_parent() == nullptr) return "";
  const std::string group = FullName(*parser.get_parent());
  return group.empty() ? parser.get_name() : group + " " + parser.get_name();
}

bool HasCommands(const CLI::App& parser) {
  return !parser.get_subcommands({}).empty();
}

// How the command line of the whole program, of a group of commands, or of one command is written.
std::string UsageOf(const CLI::App& parser) {
  if (parser.get_parent() == nullptr)
    return std::string(kProgram) + " [OPTIONS] COMMAND [ARGUMENTS]";
  std::string usage = std::string(kProgram) + " " + FullName(parser);
  if (HasCommands(parser)) return usage + " COMMAND [ARGUMENTS]";
  usage += " [OPTIONS]";
  for (const CLI::Option* positional : Positionals(parser)) {
    std::string name = positional->get_name();
    if (IsOptional(*positional)) {
      if (TakesMany(*positional)) name += " ...";
      name.insert(0, "[").append("]");
    }
    usage.append(" ").append(name);
  }
  return usage;
}

class HelpFormatter final : public CLI::Formatter {
 public:
  HelpFormatter() {
    column_width(24);
    label("Positionals", "Arguments");
  }

  std::string make_help(const CLI::App* app, std::string, CLI::AppFormatMode mode) const override {
    return make_description(app) + "\nUsage: " + UsageOf(*app) + "\n" + make_positionals(app) +
           make_subcommands(app, mode) + make_groups(app, mode) + "\n" + make_footer(app);
  }
};

std::string Quoted(const std::string& argument) {
  return "'" + argument + "'";
}

bool IsOption(std::string_view argument) {
  return argument.starts_with('-');
}

// The first argument that `parser` could not place. The mark "--" before arguments that only look
// like options does not count.
std::optional<std::string> FirstUnexpected(const CLI::App& parser) {
  std::vector<std::string> unexpected = parser.remaining();
  if (unexpected.size() > parser.remaining_size()) {
    unexpected.erase(std::ranges::find(unexpected, "--"));
  }
  if (unexpected.empty()) return std::nullopt;
  return unexpected.front();
}

// The command or group that the parser has chosen among its own, and so on; null for none.
const CLI::App* ChosenAmong(const CLI::App& parser) {
  const auto chosen = parser.get_subcommands();
  if (chosen.empty()) return nullptr;
  const CLI::App* const further = ChosenAmong(*chosen.front());
  return further == nullptr ? chosen.front() : further;
}

std::vector<std::string> NamesOfCommands(const CLI::App& parser) {
  return NamesOf(parser.get_subcommands({}), &CLI::App::get_name);
}

std::string MissingCommand(const CLI::App& parser) {
  const auto names = NamesOfCommands(parser);
  return "COMMAND is missing; the commands are " + NamesInProse(ViewsOf(names));
}

std::string UnknownCommand(const CLI::App& parser, const std::string& given) {
  const auto names = NamesOfCommands(parser);
  const std::string group = FullName(parser);
  if (names.empty()) return Quoted(given) + " is not a command of " + group + "; there are none";
  return UnknownName(given, group.empty() ? "a command" : "a command of " + group, "commands",
                     ViewsOf(names));
}

// An option that the parser does not have, with one of its own that is near.
std::string UnknownOption(const CLI::App& parser, const std::string& given) {
  std::vector<std::string> names;
  for (const CLI::Option* option : parser.get_options()) {
    if (!option->get_positional()) names.push_back("--" + option->get_lnames().front());
  }
  const auto nearest = NearestName(given.substr(0, given.find('=')), ViewsOf(names));
  const std::string command = FullName(parser);
  std::string message =
      Quoted(given) + " is not an option of " + (command.empty() ? kProgram : command);
  if (!nearest.empty()) message.append("; did you mean ").append(nearest).append("?");
  return message;
}

// The parser of the whole command line. It finds options and their values; what is missing or too
// much is found afterwards, where the message can say more about it.
class Parser {
 public:
  Parser() : app_("notifyhost, the reference host of the Brantel_Notifications module", kProgram) {
    app_.formatter(std::make_shared<HelpFormatter>());
    app_.set_help_flag("-h,--help", "Show this help");
    app_.set_version_flag("--version", std::string(kProgram).append(" ").append(ProgramVersion()),
                          "Show the version of notifyhost");
    // A path may begin with a slash.
    app_.allow_windows_style_options(false);
    app_.allow_extras();
    app_.require_subcommand(0, 1);
    for (const KnownCommand& command : kCommands) {
      AddParser(command);
    }
    Declare<CompletionCommand>(*AddCommand(CompletionCommand::kSyntax), completion_);
    Declare<HelpCommand>(*AddCommand(HelpCommand::kSyntax), help_);
    AddModuleOption(app_);
    app_.footer(
        "Exit codes: 0 delivered or done, 1 failed, 2 wrong usage or invalid values,\n"
        "3 nothing matched\n\n"
        "Examples:\n"
        "  notifyhost register\n"
        "  notifyhost doctor C:\\Instances\n"
        "  notifyhost send LaunchProgram C:\\Instances\\Restart.ins --set n=Router\n"
        "  notifyhost send --help");
  }

  std::variant<Invocation, HelpRequest, UsageError> Parse(
      const std::vector<std::string>& arguments) {
    if (const auto error = FindMisreadEqualsSign(arguments)) return MakeUsageError(*error);
    try {
      app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
      return HelpRequest{app_.help()};
    } catch (const CLI::CallForVersion& version) {
      return HelpRequest{std::string(version.what()) + "\n"};
    } catch (const CLI::ArgumentMismatch&) {
      // No option takes more than one value, so only the last argument can lack it.
      return MakeUsageError(NeedsValue(arguments.back()));
    } catch (const CLI::ParseError& error) {
      return MakeUsageError(FindUnknownOption().value_or(error.what()));
    }
    if (const auto error = FindError()) return MakeUsageError(*error);
    if (help_) return FindHelp();
    if (completion_) return HelpRequest{CompletionScript()};
    Invocation invocation{std::nullopt, as_json_ ? ReportForm::kJson : ReportForm::kText,
                          std::nullopt, std::move(chosen_)};
    if (!module_file_.empty()) invocation.module_file = module_file_;
    if (!log_file_.empty()) invocation.log_file = log_file_;
    return invocation;
  }

 private:
  // Every command that uses the module takes it, and it may also stand before the command.
  void AddModuleOption(CLI::App& parser) {
    DeclareFileOption(parser, kModuleOption, module_file_,
                      "Load this module file, registered or not. Without\n"
                      "it, send, add and edit go by the registered classes,\n"
                      "and what is about the module takes the one beside\n"
                      "notifyhost");
  }

  void AddJsonOption(CLI::App& parser) {
    parser.add_flag_callback(
        kJsonOption, [this] { as_json_ = true; },
        "Tell it as JSON for programs, an object a line, with\n"
        "texts as they are");
  }

  void AddLogFileOption(CLI::App& parser) {
    DeclareFileOption(parser, kLogFileOption, log_file_,
                      "Also write what is told to this file, with the time\n"
                      "before each line. One beyond a megabyte is put aside");
  }

  // The parser for what follows the first word of a name, which it makes where there is none.
  CLI::App& GroupOf(std::string_view name) {
    const std::string first(name.substr(0, name.find(' ')));
    if (first == name) return app_;
    for (CLI::App* const group : app_.get_subcommands({})) {
      if (group->get_name() == first) return *group;
    }
    const auto* const known = std::ranges::find(kGroups, first, &CommandGroup::name);
    CLI::App* const group = app_.add_subcommand(known->name, known->summary);
    group->group("Commands");
    group->require_subcommand(0, 1);
    return *group;
  }

  CLI::App* AddCommand(const CommandSyntax& syntax) {
    const std::string_view name = syntax.name;
    CLI::App* const parser =
        GroupOf(name).add_subcommand(std::string(name.substr(name.rfind(' ') + 1)), syntax.summary);
    parser->group("Commands");
    parser->footer(std::string("Examples:\n") + syntax.examples);
    return parser;
  }

  void AddParser(const KnownCommand& command) {
    const CommandSyntax& syntax = *command.syntax;
    CLI::App* const parser = AddCommand(syntax);
    command.declare(*parser, chosen_);
    if (syntax.report_use == ReportUse::kReport) AddJsonOption(*parser);
    AddLogFileOption(*parser);
    if (syntax.module_use == ModuleUse::kModule) AddModuleOption(*parser);
  }

  // The help that "help" and the names behind it ask for.
  [[nodiscard]] std::variant<Invocation, HelpRequest, UsageError> FindHelp() const {
    const CLI::App* parser = &app_;
    for (const std::string& word : help_->words) {
      const auto commands = parser->get_subcommands({});
      const auto named = std::ranges::find(commands, word, &CLI::App::get_name);
      if (named == commands.end()) return MakeUsageError(UnknownCommand(*parser, word));
      parser = *named;
    }
    return HelpRequest{HelpOf(*parser)};
  }

  [[nodiscard]] static std::string HelpOf(const CLI::App& parser) {
    // Not its own help, which would be that of the command that was given.
    return parser.get_formatter()->make_help(&parser, parser.get_name(),
                                             CLI::AppFormatMode::Normal);
  }

  [[nodiscard]] std::string CompletionScript() const {
    std::vector<CompletedCommand> commands;
    AppendCompleted(app_, commands);
    const auto shells = CompletionShells();
    return std::ranges::find(shells, completion_->shell, &CompletionShell::name)->script(commands);
  }

  // The parser's commands, and itself behind them.
  static void AppendCompleted(const CLI::App& parser, std::vector<CompletedCommand>& commands) {
    for (const CLI::App* const command : parser.get_subcommands({}))
      AppendCompleted(*command, commands);
    commands.push_back({FullName(parser), WordsBehind(parser)});
  }

  static std::vector<std::string> WordsBehind(const CLI::App& parser) {
    std::vector<std::string> words = NamesOfCommands(parser);
    for (const CLI::Option* const option : parser.get_options()) {
      if (option->get_name() == "CLASS") std::ranges::copy(ClassNames(), std::back_inserter(words));
      if (!option->get_positional()) words.push_back("--" + option->get_lnames().front());
    }
    return words;
  }

  static std::vector<std::string> ClassNames() {
    return NamesOf(ClassDescriptions(), [](const ClassDescription* notifier_class) {
      return notifier_class->instances.class_name;
    });
  }

  [[nodiscard]] const CLI::App* ChosenParser() const { return ChosenAmong(app_); }

  [[nodiscard]] UsageError MakeUsageError(const std::string& error) const {
    const CLI::App* const command = ChosenParser();
    const std::string command_name = command == nullptr ? "" : FullName(*command) + " ";
    return {std::string(kProgram) + ": " + error + "\nRun " + kProgram + " " + command_name +
            "--help for help.\n"};
  }

  static std::string NeedsValue(const std::string& option) { return option + " needs a value"; }

  // Whether a command has a flag of this name.
  [[nodiscard]] static bool IsFlag(const CLI::App& parser, const std::string& name) {
    const CLI::Option* const option = parser.get_option_no_throw(name);
    return (option != nullptr && option->get_items_expected_max() == 0) ||
           std::ranges::any_of(parser.get_subcommands({}),
                               [&](const CLI::App* command) { return IsFlag(*command, name); });
  }

  // What the parser would misread: an option with an equals sign and no value would get the next
  // argument, and a flag would be switched off by a value.
  [[nodiscard]] std::optional<std::string> FindMisreadEqualsSign(
      const std::vector<std::string>& arguments) const {
    for (const std::string& argument : arguments) {
      if (argument == "--") break;
      const std::size_t equals = argument.find('=');
      if (!argument.starts_with("--") || equals == std::string::npos) continue;
      const std::string name = argument.substr(0, equals);
      if (IsFlag(app_, name)) return name + " takes no value";
      if (equals == argument.size() - 1) return NeedsValue(argument);
    }
    return std::nullopt;
  }

  // An option that the command does not have. Its value is left among the arguments, so that one of
  // those is wrong, too.
  [[nodiscard]] std::optional<std::string> FindUnknownOption() const {
    const CLI::App* const command = ChosenParser();
    if (command == nullptr) return std::nullopt;
    const auto unexpected = FirstUnexpected(*command);
    if (!unexpected || !IsOption(*unexpected)) return std::nullopt;
    return FindErrorOf(*command);
  }

  // What stands before a command and belongs behind it, or nowhere.
  [[nodiscard]] static std::optional<std::string> FindOutOfPlace(const CLI::App& command) {
    for (const CLI::App* parser = command.get_parent(); parser != nullptr;
         parser = parser->get_parent()) {
      if (const auto unexpected = FirstUnexpected(*parser))
        return Quoted(*unexpected) + " is out of place in " + UsageOf(command);
    }
    return std::nullopt;
  }

  [[nodiscard]] std::optional<std::string> FindError() const {
    const CLI::App* const chosen = ChosenParser();
    const CLI::App& command = chosen == nullptr ? app_ : *chosen;
    if (auto error = FindOutOfPlace(command)) return error;
    return HasCommands(command) ? FindErrorOfGroup(command) : FindErrorOf(command);
  }

  [[nodiscard]] static std::optional<std::string> FindErrorOfGroup(const CLI::App& group) {
    const auto unexpected = FirstUnexpected(group);
    if (!unexpected) return MissingCommand(group);
    return IsOption(*unexpected) ? UnknownOption(group, *unexpected)
                                 : UnknownCommand(group, *unexpected);
  }

  [[nodiscard]] std::optional<std::string> FindErrorOf(const CLI::App& command) const {
    if (const auto unexpected = FirstUnexpected(command)) {
      if (IsOption(*unexpected)) return UnknownOption(command, *unexpected);
      return Quoted(*unexpected) + " is not an argument of " + FullName(command);
    }
    for (const CLI::Option* positional : Positionals(command)) {
      if (positional->count() == 0 && !IsOptional(*positional)) {
        return positional->get_name() + " is missing";
      }
    }
    if (!module_file_.empty() && command.get_option_no_throw(kModuleOption) == nullptr) {
      return Quoted(kModuleOption) + " is not an option of " + FullName(command);
    }
    return FindRepeatedOption(command);
  }

  [[nodiscard]] std::optional<std::string> FindRepeatedOption(const CLI::App& command) const {
    for (const CLI::Option* option : command.get_options()) {
      const CLI::Option* const global = app_.get_option_no_throw(option->get_name());
      const std::size_t count = option->count() + (global == nullptr ? 0 : global->count());
      if (count > 1 && option->get_items_expected_max() <= 1) {
        return option->get_name() + " is given more than once";
      }
    }
    return std::nullopt;
  }

  CLI::App app_;
  std::string module_file_;
  std::string log_file_;
  bool as_json_ = false;
  Command chosen_;
  std::optional<CompletionCommand> completion_;
  std::optional<HelpCommand> help_;
};

}  // namespace

std::variant<Invocation, HelpRequest, UsageError> ParseCommandLine(
    const std::vector<std::string>& arguments) {
  return Parser().Parse(arguments);
}

}  // namespace brantel::host
