#include "host/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

namespace brantel::host {
namespace {

constexpr const char* kProgram = "notifyhost";
constexpr const char* kModuleOption = "--module";

template <typename Options>
void Declare(CLI::App& parser, Command& chosen) {
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
  return std::array{KnownCommand{&Commands::kSyntax, Declare<Commands>}...};
}

constexpr std::array kCommands = CommandsOf(std::type_identity<Command>());

std::vector<const CLI::Option*> Positionals(const CLI::App& parser) {
  return parser.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

// Whether it may be given any number of times, or not at all.
bool IsOptional(const CLI::Option& positional) {
  return positional.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
}

// How the command line of the whole program, or of one command, is written.
std::string UsageOf(const CLI::App& parser) {
  if (parser.get_parent() == nullptr)
    return std::string(kProgram) + " [OPTIONS] COMMAND [ARGUMENTS]";
  std::string usage = std::string(kProgram) + " " + parser.get_name() + " [OPTIONS]";
  for (const CLI::Option* positional : Positionals(parser)) {
    const std::string name = positional->get_name();
    usage += " " + (IsOptional(*positional) ? "[" + name + " ...]" : name);
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

// The parser of the whole command line. It finds options and their values; what is missing or too
// much is found afterwards, where the message can say more about it.
class Parser {
 public:
  Parser() : app_("notifyhost, the reference host of the Brantel_Notifications module", kProgram) {
    app_.formatter(std::make_shared<HelpFormatter>());
    app_.set_help_flag("-h,--help", "Show this help");
    // A path may begin with a slash.
    app_.allow_windows_style_options(false);
    app_.allow_extras();
    app_.require_subcommand(0, 1);
    for (const KnownCommand& command : kCommands) {
      AddParser(command);
    }
    AddModuleOption(app_);
    app_.footer(
        "Exit codes: 0 delivered or done, 1 failed, 2 wrong usage\n\n"
        "Examples:\n"
        "  notifyhost register\n"
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
    } catch (const CLI::ArgumentMismatch&) {
      // No option takes more than one value, so only the last argument can lack it.
      return MakeUsageError(NeedsValue(arguments.back()));
    } catch (const CLI::ParseError& error) {
      return MakeUsageError(FindUnknownOption().value_or(error.what()));
    }
    if (const auto error = FindError()) return MakeUsageError(*error);
    if (module_file_.empty()) return Invocation{std::nullopt, std::move(chosen_)};
    return Invocation{module_file_, std::move(chosen_)};
  }

 private:
  // Every command that uses the module takes it, and it may also stand before the command.
  void AddModuleOption(CLI::App& parser) {
    parser
        .add_option_function<std::string>(
            kModuleOption, [this](const std::string& file) { SetModuleFile(file); },
            "Load this module file, registered or not. Without\n"
            "it, send, add and edit go by the registered classes,\n"
            "and classes, register and unregister take the module\n"
            "beside notifyhost")
        ->option_text("FILE")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  }

  void SetModuleFile(const std::string& file) {
    if (file.empty()) throw CLI::ValidationError(kModuleOption, "the file name is empty");
    module_file_ = file;
  }

  void AddParser(const KnownCommand& command) {
    const CommandSyntax& syntax = *command.syntax;
    CLI::App* const parser = app_.add_subcommand(syntax.name, syntax.summary);
    parser->group("Commands");
    parser->footer(std::string("Examples:\n") + syntax.examples);
    command.declare(*parser, chosen_);
    if (syntax.module_use == ModuleUse::kModule) AddModuleOption(*parser);
  }

  [[nodiscard]] const CLI::App* ChosenParser() const {
    const auto chosen = app_.get_subcommands();
    return chosen.empty() ? nullptr : chosen.front();
  }

  [[nodiscard]] UsageError MakeUsageError(const std::string& error) const {
    const CLI::App* const command = ChosenParser();
    const std::string command_name = command == nullptr ? "" : command->get_name() + " ";
    return {std::string(kProgram) + ": " + error + "\nRun " + kProgram + " " + command_name +
            "--help for help.\n"};
  }

  static std::string NeedsValue(const std::string& option) { return option + " needs a value"; }

  // Whether a command has a flag of this name.
  [[nodiscard]] bool IsFlag(const std::string& name) const {
    return std::ranges::any_of(app_.get_subcommands({}), [&](const CLI::App* command) {
      const CLI::Option* const option = command->get_option_no_throw(name);
      return option != nullptr && option->get_items_expected_max() == 0;
    });
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
      if (IsFlag(name)) return name + " takes no value";
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

  [[nodiscard]] std::optional<std::string> FindError() const {
    const CLI::App* const command = ChosenParser();
    const auto unexpected = FirstUnexpected(app_);
    if (command != nullptr) {
      if (unexpected) return Quoted(*unexpected) + " is out of place in " + UsageOf(*command);
      return FindErrorOf(*command);
    }
    if (!unexpected) return "COMMAND is missing; the commands are " + CommandNames();
    if (IsOption(*unexpected)) return Quoted(*unexpected) + " is not an option of " + kProgram;
    return Quoted(*unexpected) + " is not a command; the commands are " + CommandNames();
  }

  [[nodiscard]] std::optional<std::string> FindErrorOf(const CLI::App& command) const {
    if (const auto unexpected = FirstUnexpected(command)) {
      const char* const kind = IsOption(*unexpected) ? "an option" : "an argument";
      return Quoted(*unexpected) + " is not " + kind + " of " + command.get_name();
    }
    for (const CLI::Option* positional : Positionals(command)) {
      if (positional->count() == 0 && !IsOptional(*positional)) {
        return positional->get_name() + " is missing";
      }
    }
    if (!module_file_.empty() && command.get_option_no_throw(kModuleOption) == nullptr) {
      return Quoted(kModuleOption) + " is not an option of " + command.get_name();
    }
    for (const CLI::Option* option : command.get_options()) {
      const CLI::Option* const global = app_.get_option_no_throw(option->get_name());
      const std::size_t count = option->count() + (global == nullptr ? 0 : global->count());
      if (count > 1 && option->get_items_expected_max() <= 1) {
        return option->get_name() + " is given more than once";
      }
    }
    return std::nullopt;
  }

  static std::string CommandNames() {
    std::string names;
    for (const KnownCommand& command : kCommands) {
      if (!names.empty()) names += &command == &kCommands.back() ? " and " : ", ";
      names += command.syntax->name;
    }
    return names;
  }

  CLI::App app_;
  std::string module_file_;
  Command chosen_;
};

}  // namespace

std::variant<Invocation, HelpRequest, UsageError> ParseCommandLine(
    const std::vector<std::string>& arguments) {
  return Parser().Parse(arguments);
}

}  // namespace brantel::host
