#include "host/commands/shared_arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iterator>

#include "description/settings_profile.h"

namespace brantel::host {
namespace {

// More than any class has fields or settings.
constexpr int kMostValues = 1000;

void DeclareName(CLI::App& parser, const std::string& argument, std::string& name,
                 const std::string& description) {
  const auto set_name = [argument, &name](const std::string& given) {
    if (given.empty()) throw CLI::ValidationError(argument, "the name is empty");
    name = given;
  };
  parser.add_option_function<std::string>(argument, set_name, description)->type_name("");
}

void DeclareMany(CLI::App& parser, const std::string& argument, const CLI::callback_t& set,
                 const std::string& description) {
  parser.add_option(argument, set, description)
      ->option_text("...")
      // Arguments beyond its least number an option reads for lists in brackets. With this policy
      // it may have fewer.
      ->expected(kMostValues)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

std::string EventNames() {
  std::string names;
  for (const NamedAlertEvent& named : NamedAlertEvents()) {
    names += std::string(named.name) + ", ";
  }
  return names;
}

void SetEvent(AlertEvent& event, const std::string& text) {
  const auto parsed = ParseAlertEvent(text);
  if (!parsed) {
    throw CLI::ValidationError("--event", "'" + text + "' is not an event; it takes " +
                                              EventNames() + "or a number from 0 to 0xFFFFFFFF");
  }
  event = *parsed;
}

void SetVariables(MessageVariables& variables, const std::vector<std::string>& assignments) {
  for (const std::string& assignment : assignments) {
    if (!variables.Assign(assignment)) {
      throw CLI::ValidationError("--set", "'" + assignment + "' is not of the form LETTER=VALUE");
    }
  }
}

}  // namespace

void DeclareClass(CLI::App& parser, std::string& class_name) {
  parser.add_option("CLASS", class_name, "Notifier class; notifyhost classes lists them")
      ->type_name("");
}

void DeclareDirectory(CLI::App& parser, std::string& directory) {
  DeclareName(parser, "DIR", directory, "Directory of instance files");
}

void DeclareOptionalPath(CLI::App& parser, const std::string& argument, std::string& path,
                         const std::string& description) {
  parser.add_option(argument, path, description)
      ->type_name("")
      // With a policy of its own it may be left out.
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void DeclareFileOption(CLI::App& parser, const std::string& option, std::string& file,
                       const std::string& description) {
  const auto set_file = [option, &file](const std::string& given) {
    if (given.empty()) throw CLI::ValidationError(option, "the file name is empty");
    file = given;
  };
  parser.add_option_function<std::string>(option, set_file, description)
      ->option_text("FILE")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void DeclareFile(CLI::App& parser, std::string& file, const std::string& description) {
  DeclareName(parser, "FILE", file, description);
}

void DeclareAssignments(CLI::App& parser, const std::string& argument, const std::string& form,
                        std::vector<FieldValue>& values, const std::string& description) {
  const auto parsed = [form](const std::string& text) {
    const auto value = FieldValue::Parse(text);
    if (!value) throw CLI::ValidationError("'" + text + "' is not of the form " + form);
    return *value;
  };
  const auto set_values = [parsed, &values](const CLI::results_t& texts) {
    values.clear();
    std::ranges::transform(texts, std::back_inserter(values), parsed);
    return true;
  };
  DeclareMany(parser, argument, set_values, description);
}

void DeclareNames(CLI::App& parser, const std::string& argument, std::vector<std::string>& names,
                  const std::string& description) {
  const auto set_names = [&names](const CLI::results_t& texts) {
    names = texts;
    return true;
  };
  DeclareMany(parser, argument, set_names, description);
}

void DeclareText(CLI::App& parser, const std::string& option, const std::string& form,
                 std::string& text, const std::string& description) {
  parser.add_option(option, text, description)
      ->option_text(form)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void DeclareNumber(CLI::App& parser, const std::string& option, int& number, int first, int last,
                   const std::string& description) {
  const auto set_number = [option, &number, first, last](const std::string& text) {
    const char* const end = text.data() + text.size();
    const auto [stopped_at, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stopped_at != end || number < first || number > last)
      throw CLI::ValidationError(option, "'" + text + "' is no number from " +
                                             std::to_string(first) + " to " + std::to_string(last));
  };
  parser.add_option_function<std::string>(option, set_number, description)
      ->option_text("N")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void DeclareFlag(CLI::App& parser, const char* name, bool& flag, const char* description) {
  parser.add_flag_callback(
      name, [&flag] { flag = true; }, description);
}

void DeclareShowSecrets(CLI::App& parser, bool& shows_secrets) {
  DeclareFlag(parser, "--show-secrets", shows_secrets,
              "Show passwords, which are hidden otherwise");
}

void DeclareNoCheck(CLI::App& parser, bool& is_unchecked) {
  DeclareFlag(parser, "--no-check", is_unchecked,
              "Write values also with which no alert would come to\n"
              "anything");
}

void DeclareRawValues(CLI::App& parser, bool& takes_raw_values) {
  DeclareFlag(parser, "--raw-values", takes_raw_values,
              "Put values of --set in as they are. Otherwise control\n"
              "characters become blanks, a Beeper gets digits alone,\n"
              "Voice nothing that makes a path, and a line of a lone\n"
              "full stop does not end a mail");
}

void DeclareJournal(CLI::App& parser, std::string& journal) {
  DeclareFileOption(parser, "--journal", journal,
                    "The journal of alerts. Without it:\n"
                    "notifyhost.journal in the directory of the instances,\n"
                    "or in the working directory where there is none");
}

void DeclareProfile(CLI::App& parser, int& profile) {
  DeclareNumber(parser, "--profile", profile, kFirstSettingsProfile, kLastSettingsProfile,
                "Settings profile, from 0 to 10. Without it: 0");
}

void DeclareEvent(CLI::App& parser, AlertEvent& event) {
  parser
      .add_option_function<std::string>(
          "--event", [&event](const std::string& text) { SetEvent(event, text); },
          "What happened: item-up, item-down, service-up,\n"
          "service-down, trap, or a trigger word such as 3 or\n"
          "0x10; none for no event. Without it: item-down")
      ->option_text("EVENT")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void DeclareVariables(CLI::App& parser, MessageVariables& variables) {
  parser
      .add_option_function<std::vector<std::string>>(
          "--set",
          [&variables](const std::vector<std::string>& assignments) {
            SetVariables(variables, assignments);
          },
          "Puts VALUE in the place of %LETTER in the alert's\n"
          "texts; may be given for several letters. %% becomes\n"
          "%, and variables without a value stay as they are")
      ->option_text("LETTER=VALUE")
      ->allow_extra_args(false);
}

}  // namespace brantel::host
