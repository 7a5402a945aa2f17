#include "host/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/text/version.h"

namespace brantel::host {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

using Arguments = std::vector<std::string>;

Invocation Accepted(const Arguments& arguments) {
  const auto parsed = ParseCommandLine(arguments);
  if (const auto* const error = std::get_if<UsageError>(&parsed)) {
    ADD_FAILURE() << ::testing::PrintToString(arguments) << ": " << error->text;
    return {};
  }
  return std::get<Invocation>(parsed);
}

SendCommand AcceptedSend(const Arguments& arguments) {
  return std::get<SendCommand>(Accepted(arguments).command);
}

std::string Help(const Arguments& arguments) {
  return std::get<HelpRequest>(ParseCommandLine(arguments)).text;
}

TEST(CommandLine, ChoosesTheCommand) {
  EXPECT_TRUE(std::holds_alternative<ClassesCommand>(Accepted({"classes"}).command));
  EXPECT_TRUE(std::holds_alternative<RegisterCommand>(Accepted({"register"}).command));
  EXPECT_TRUE(std::holds_alternative<UnregisterCommand>(Accepted({"unregister"}).command));
  EXPECT_TRUE(std::holds_alternative<SendCommand>(Accepted({"send", "Sound", "a.ins"}).command));
  EXPECT_TRUE(std::holds_alternative<PreviewCommand>(Accepted({"preview", "a"}).command));
  EXPECT_TRUE(std::holds_alternative<AddCommand>(Accepted({"add", "Sound", "."}).command));
  EXPECT_TRUE(std::holds_alternative<EditCommand>(Accepted({"edit", "Sound", ".", "a"}).command));
  EXPECT_TRUE(std::holds_alternative<InstancesCommand>(Accepted({"instances", "."}).command));
  EXPECT_TRUE(std::holds_alternative<ShowCommand>(Accepted({"show", "a"}).command));
  EXPECT_TRUE(std::holds_alternative<NewCommand>(Accepted({"new", "Sound", "a"}).command));
  EXPECT_TRUE(std::holds_alternative<FieldsCommand>(Accepted({"fields", "Sound"}).command));
  EXPECT_TRUE(std::holds_alternative<StatusCommand>(Accepted({"status"}).command));
  EXPECT_TRUE(std::holds_alternative<PortsCommand>(Accepted({"ports"}).command));
  EXPECT_TRUE(std::holds_alternative<DoctorCommand>(Accepted({"doctor"}).command));
  EXPECT_TRUE(std::holds_alternative<SetCommand>(Accepted({"set", "a", "b=c"}).command));
  EXPECT_TRUE(
      std::holds_alternative<SettingsListCommand>(Accepted({"settings", "list", "Pager"}).command));
  EXPECT_TRUE(std::holds_alternative<SettingsExportCommand>(
      Accepted({"settings", "export", "Pager"}).command));
}

TEST(CommandLine, TakesTheModuleBeforeAndAfterTheCommand) {
  EXPECT_EQ(Accepted({"classes"}).module_file, std::nullopt);
  EXPECT_EQ(Accepted({"--module", "a.dll", "classes"}).module_file, "a.dll");
  EXPECT_EQ(Accepted({"classes", "--module", "a.dll"}).module_file, "a.dll");
  EXPECT_EQ(Accepted({"--module=a.dll", "register"}).module_file, "a.dll");
  EXPECT_EQ(Accepted({"send", "Sound", "--module", "a=b.dll", "x"}).module_file, "a=b.dll");
  EXPECT_EQ(Accepted({"--module", "send", "send", "Sound", "x"}).module_file, "send");
  EXPECT_EQ(Accepted({"add", "Sound", ".", "--module", "a.dll"}).module_file, "a.dll");
  EXPECT_EQ(Accepted({"--module", "a.dll", "edit", "Sound", ".", "x"}).module_file, "a.dll");
}

TEST(CommandLine, TakesClassAndFileOfSend) {
  const std::vector<std::array<std::string, 2>> cases = {
      {"LaunchProgram", "C:\\Instances\\Restart.ins"},
      {"Sound", ""},
      {"", ""},
      {"Sound", "/tmp/night.ins"},
      {"Sound", "[a,b]"},
      {"Sound", "{}"},
      {"Sound", "send"},
      {"register", "classes"},
      {"Sound", "Zürich ☎.ins"},
      {"Sound", "*.ins"},
      {"Sound", "a b=c"},
  };
  for (const auto& [class_name, file] : cases) {
    const SendCommand command = AcceptedSend({"send", class_name, file});
    EXPECT_EQ(command.class_name, class_name);
    EXPECT_EQ(command.instance_file, file);
  }
}

TEST(CommandLine, TakesWhatLooksLikeAnOptionBehindTwoDashes) {
  const SendCommand command = AcceptedSend({"send", "--event", "trap", "--", "Sound", "--set"});
  EXPECT_EQ(command.class_name, "Sound");
  EXPECT_EQ(command.instance_file, "--set");
  EXPECT_EQ(command.options.event, kTrap);
  EXPECT_EQ(AcceptedSend({"send", "Sound", "--", "--"}).instance_file, "--");
}

TEST(CommandLine, TakesTheEventOfSend) {
  EXPECT_EQ(AcceptedSend({"send", "Beeper", "x"}).options.event, kItemDown);
  EXPECT_EQ(AcceptedSend({"send", "Beeper", "x", "--event", "service-up"}).options.event,
            kServiceUp);
  EXPECT_EQ(AcceptedSend({"send", "--event=none", "Beeper", "x"}).options.event, kNoEvent);
  EXPECT_EQ(AcceptedSend({"send", "Beeper", "--event", "0x14", "x"}).options.event, AlertEvent{20});
}

TEST(CommandLine, TakesTheVariablesOfSend) {
  const auto expand = [](const Arguments& arguments) {
    return AcceptedSend(arguments).options.variables.Expand("%n|%C");
  };
  EXPECT_EQ(expand({"send", "Beeper", "x"}), "%n|%C");
  EXPECT_EQ(expand({"send", "--set", "n=Router 7", "Beeper", "--set", "C=17", "x"}), "Router 7|17");
  EXPECT_EQ(expand({"send", "Beeper", "x", "--set", "n=", "--set=C=a=b"}), "|a=b");
  EXPECT_EQ(expand({"send", "Beeper", "x", "--set", "n=[1,2]", "--set", "C=--set"}), "[1,2]|--set");
  EXPECT_EQ(expand({"send", "Beeper", "x", "--set", "n=1", "--set", "n=2"}), "2|%C");
}

TEST(CommandLine, TakesHowAnAlertIsSent) {
  const AlertOptions plain = AcceptedSend({"send", "Beeper", "x"}).options;
  EXPECT_EQ(plain.time_limit, std::nullopt);
  EXPECT_FALSE(plain.takes_raw_values || plain.has_times || plain.shows_secrets);
  EXPECT_EQ(plain.journal, "");
  const auto test = std::get<TestCommand>(
      Accepted({"test", "Beeper", "up-code=1", "--timeout", "0.25", "--raw-values", "--timestamps",
                "--journal", "C:\\a.journal", "--no-check"})
          .command);
  EXPECT_EQ(test.class_name, "Beeper");
  EXPECT_EQ(test.values, (std::vector<FieldValue>{{"up-code", "1"}}));
  EXPECT_TRUE(test.is_unchecked);
  EXPECT_EQ(test.options.time_limit, std::chrono::milliseconds(250));
  EXPECT_TRUE(test.options.takes_raw_values && test.options.has_times);
  EXPECT_EQ(test.options.journal, "C:\\a.journal");
  EXPECT_EQ(AcceptedSend({"send", "Beeper", "x", "--timeout=86400"}).options.time_limit,
            std::chrono::hours(24));
}

TEST(CommandLine, TakesALogFileForEachCommand) {
  EXPECT_EQ(Accepted({"classes"}).log_file, std::nullopt);
  EXPECT_EQ(Accepted({"classes", "--log-file", "C:\\log"}).log_file, "C:\\log");
  EXPECT_EQ(Accepted({"send", "Sound", "--log-file=a=b", "x"}).log_file, "a=b");
}

TEST(CommandLine, ShowsScriptsOfCompletion) {
  for (const char* shell : {"bash", "powershell"}) {
    const auto parsed = ParseCommandLine({"completion", shell});
    const auto* const script = std::get_if<HelpRequest>(&parsed);
    ASSERT_NE(script, nullptr);
    EXPECT_NE(script->text.find("settings import"), std::string::npos);
  }
}

TEST(CommandLine, TakesWhatIsToldOfTheJournal) {
  const auto history = [](const Arguments& arguments) {
    return std::get<HistoryCommand>(Accepted(arguments).command);
  };
  EXPECT_EQ(history({"history"}).directory, "");
  EXPECT_FALSE(history({"history"}).follows || history({"history"}).is_failed_only);
  const HistoryCommand all = history(
      {"history", "C:\\Instances", "--failed", "--since", "12h", "--follow", "--journal", "x"});
  EXPECT_EQ(all.directory, "C:\\Instances");
  EXPECT_TRUE(all.follows && all.is_failed_only);
  EXPECT_EQ(all.since, "12h");
  EXPECT_EQ(all.journal, "x");
}

TEST(CommandLine, TakesClassDirectoryAndNameOfTheDialogs) {
  const auto add = std::get<AddCommand>(Accepted({"add", "Beeper", "C:\\Instances"}).command);
  EXPECT_EQ(add.class_name, "Beeper");
  EXPECT_EQ(add.directory, "C:\\Instances");
  const auto edit = std::get<EditCommand>(Accepted({"edit", "Voice", "..", "Zürich ☎"}).command);
  EXPECT_EQ(edit.class_name, "Voice");
  EXPECT_EQ(edit.directory, "..");
  EXPECT_EQ(edit.name, "Zürich ☎");
}

TEST(CommandLine, TakesWhatIsShownOfInstances) {
  EXPECT_EQ(std::get<InstancesCommand>(Accepted({"instances", "/tmp"}).command).directory, "/tmp");
  EXPECT_EQ(std::get<FieldsCommand>(Accepted({"fields", "pager"}).command).class_name, "pager");
  const auto show = [](const Arguments& arguments) {
    return std::get<ShowCommand>(Accepted(arguments).command);
  };
  EXPECT_EQ(show({"show", "Night"}).file, "Night");
  EXPECT_FALSE(show({"show", "Night"}).shows_secrets);
  EXPECT_TRUE(show({"show", "Night", "--show-secrets"}).shows_secrets);
  EXPECT_EQ(show({"show", "--json", "Night"}).file, "Night");
  EXPECT_EQ(show({"show", "--", "--json"}).file, "--json");
}

TEST(CommandLine, TakesTheFormOfTheReport) {
  EXPECT_EQ(Accepted({"show", "Night"}).report_form, ReportForm::kText);
  for (const Arguments& arguments :
       std::vector<Arguments>{{"show", "Night", "--json"},
                              {"show", "--json", "Night"},
                              {"settings", "list", "Pager", "--json"},
                              {"doctor", "--json"},
                              {"classes", "--json", "--module", "a.dll"}}) {
    EXPECT_EQ(Accepted(arguments).report_form, ReportForm::kJson)
        << ::testing::PrintToString(arguments);
  }
}

TEST(CommandLine, TakesThePathOfDoctorOrNone) {
  const auto doctor = [](const Arguments& arguments) {
    return std::get<DoctorCommand>(Accepted(arguments).command);
  };
  EXPECT_EQ(doctor({"doctor"}).path, "");
  EXPECT_FALSE(doctor({"doctor"}).goes_online);
  EXPECT_EQ(doctor({"doctor", "."}).path, ".");
  EXPECT_EQ(doctor({"doctor", "--online", "[a,b]"}).path, "[a,b]");
  EXPECT_TRUE(doctor({"doctor", ".", "--online"}).goes_online);
  EXPECT_EQ(doctor({"doctor", "--", "--online"}).path, "--online");
}

TEST(CommandLine, TakesWhatSettingsAreAbout) {
  const auto set = std::get<SettingsSetCommand>(
      Accepted({"settings", "set", "Pager", "baud=9600", "--profile", "10"}).command);
  EXPECT_EQ(set.place.class_name, "Pager");
  EXPECT_EQ(set.place.profile, 10);
  EXPECT_EQ(set.values, (std::vector<FieldValue>{{"baud", "9600"}}));
  const auto reset =
      std::get<SettingsResetCommand>(Accepted({"settings", "reset", "Pager", "a", "b"}).command);
  EXPECT_EQ(reset.place.profile, 0);
  EXPECT_EQ(reset.names, (std::vector<std::string>{"a", "b"}));
  EXPECT_TRUE(std::get<SettingsResetCommand>(Accepted({"settings", "reset", "Pager"}).command)
                  .names.empty());
  const auto import = std::get<SettingsImportCommand>(
      Accepted({"settings", "import", "Beeper", "a.json", "--no-check"}).command);
  EXPECT_EQ(import.file, "a.json");
  EXPECT_TRUE(import.is_unchecked);
  EXPECT_EQ(std::get<SettingsGetCommand>(Accepted({"settings", "get", "Beeper", "x"}).command).name,
            "x");
}

TEST(CommandLine, TakesWhatIsChangedByForce) {
  EXPECT_FALSE(std::get<UnregisterCommand>(Accepted({"unregister"}).command).takes_any_copy);
  EXPECT_TRUE(
      std::get<UnregisterCommand>(Accepted({"unregister", "--force"}).command).takes_any_copy);
  const auto change =
      std::get<SetCommand>(Accepted({"set", "Night", "up code=1", "--no-check"}).command);
  EXPECT_EQ(change.file, "Night");
  EXPECT_EQ(change.values, (std::vector<FieldValue>{{"up code", "1"}}));
  EXPECT_TRUE(change.is_unchecked);
}

TEST(CommandLine, TakesTheFieldsOfANewInstance) {
  const auto parse = [](const Arguments& arguments) {
    return std::get<NewCommand>(Accepted(arguments).command);
  };
  const NewCommand bare = parse({"new", "Sound", "Night"});
  EXPECT_EQ(bare.class_name, "Sound");
  EXPECT_EQ(bare.file, "Night");
  EXPECT_EQ(bare.values, std::vector<FieldValue>());
  EXPECT_FALSE(bare.replaces);

  const std::vector<FieldValue> values = {{"up code", "1=2"}, {"down-code", ""}, {"up code", "-x"}};
  for (const Arguments& arguments : std::vector<Arguments>{
           {"new", "Beeper", "x", "up code=1=2", "down-code=", "up code=-x", "--force"},
           {"new", "--force", "Beeper", "x", "up code=1=2", "down-code=", "up code=-x"},
           {"new", "Beeper", "x", "up code=1=2", "--force", "down-code=", "up code=-x"}}) {
    EXPECT_EQ(parse(arguments).values, values) << ::testing::PrintToString(arguments);
    EXPECT_TRUE(parse(arguments).replaces) << ::testing::PrintToString(arguments);
  }
  EXPECT_EQ(parse({"new", "Beeper", "x", "--", "--force=1"}).values,
            (std::vector<FieldValue>{{"--force", "1"}}));
  EXPECT_EQ(parse({"new", "Beeper", "x", "[up code=1,2]"}).values,
            (std::vector<FieldValue>{{"[up code", "1,2]"}}));
  EXPECT_EQ(parse({"new", "Beeper", "x", "message=1\r\n[2],{}%%"}).values,
            (std::vector<FieldValue>{{"message", "1\r\n[2],{}%%"}}));
}

struct WrongUsage {
  Arguments arguments;
  std::string fault;
};

const std::vector<WrongUsage>& WrongUsages() {
  static const std::string commands =
      "the commands are classes, register, unregister, status, doctor, preview, send, test, "
      "history, watch, serve, conformance, add, edit, instances, show, new, set, fields, ports, "
      "settings, service, completion and help";
  static const std::string actions = "the commands are list, get, set, reset, export and import";
  static const std::string events =
      "it takes item-up, item-down, service-up, service-down, trap, none, or a number from 0 to "
      "0xFFFFFFFF";
  static const std::vector<WrongUsage> usages = {
      {{}, "COMMAND is missing; " + commands},
      {{"--"}, "COMMAND is missing; " + commands},
      {{"--module", "a.dll"}, "COMMAND is missing; " + commands},
      {{"--module", "classes"}, "COMMAND is missing; " + commands},
      {{"frobnicate"}, "'frobnicate' is not a command; " + commands},
      {{"Send", "Sound", "x"}, "'Send' is not a command; did you mean 'send'?"},
      {{"sned", "Sound", "x"}, "'sned' is not a command; did you mean 'send'?"},
      {{"instance", "."}, "'instance' is not a command; did you mean 'instances'?"},
      {{"docter"}, "'docter' is not a command; did you mean 'doctor'?"},
      {{"help", "sedn"}, "'sedn' is not a command; did you mean 'send'?"},
      {{"help", "settings", "lst"}, "'lst' is not a command of settings; did you mean 'list'?"},
      {{"help", "send", "x"}, "'x' is not a command of send; there are none"},
      {{"settings"}, "COMMAND is missing; " + actions},
      {{"settings", "frob"}, "'frob' is not a command of settings; " + actions},
      {{"settings", "expotr", "Pager"},
       "'expotr' is not a command of settings; did you mean 'export'?"},
      {{"settings", "--profile", "1", "list", "Pager"},
       "'--profile' is out of place in notifyhost settings list [OPTIONS] CLASS"},
      {{"settings", "list"}, "CLASS is missing"},
      {{"settings", "list", "Pager", "x"}, "'x' is not an argument of settings list"},
      {{"settings", "list", "Pager", "--profile"}, "--profile needs a value"},
      {{"settings", "list", "Pager", "--profile", "11"},
       "--profile: '11' is no number from 0 to 10"},
      {{"settings", "list", "Pager", "--profile", "x"}, "--profile: 'x' is no number from 0 to 10"},
      {{"settings", "list", "Pager", "--profle", "1"},
       "'--profle' is not an option of settings list; did you mean --profile?"},
      {{"settings", "get", "Pager"}, "NAME is missing"},
      {{"settings", "set", "Pager", "x"}, "'x' is not of the form NAME=VALUE"},
      {{"settings", "import", "Pager"}, "FILE is missing"},
      {{"settings", "import", "Pager", ""}, "FILE: the name is empty"},
      {{"settings", "export", "Pager", "--json"}, "'--json' is not an option of settings export"},
      {{"doctor", ".", "."}, "'.' is not an argument of doctor"},
      {{"doctor", "--onlin"}, "'--onlin' is not an option of doctor; did you mean --online?"},
      {{"status", "x"}, "'x' is not an argument of status"},
      {{"ports", "--module", "a"}, "'--module' is not an option of ports"},
      {{"set"}, "FILE is missing"},
      {{"set", "Night", "up code"}, "'up code' is not of the form FIELD=VALUE"},
      {{"set", "Night", "a=b", "--force"}, "'--force' is not an option of set"},
      {{"--versoin"}, "'--versoin' is not an option of notifyhost; did you mean --version?"},
      {{"unregister", "--forse"},
       "'--forse' is not an option of unregister; did you mean --force?"},
      {{""}, "'' is not a command; " + commands},
      {{"/help"}, "'/help' is not a command; did you mean 'help'?"},
      {{"/?"}, "'/?' is not a command; " + commands},
      {{"--frobnicate"}, "'--frobnicate' is not an option of notifyhost"},
      {{"-m", "classes"}, "'-m' is out of place in notifyhost classes [OPTIONS]"},
      {{"frobnicate", "classes"}, "'frobnicate' is out of place in notifyhost classes [OPTIONS]"},
      {{"--event", "trap", "send", "Sound", "x"},
       "'--event' is out of place in notifyhost send [OPTIONS] CLASS FILE"},
      {{"classes", "x"}, "'x' is not an argument of classes"},
      {{"classes", "register"}, "'register' is not an argument of classes"},
      {{"register", "a.dll"}, "'a.dll' is not an argument of register"},
      {{"unregister", ""}, "'' is not an argument of unregister"},
      {{"classes", "--event", "trap"}, "'--event' is not an option of classes"},
      {{"register", "--set=n=1"}, "'--set=n=1' is not an option of register"},
      {{"--module"}, "--module needs a value"},
      {{"classes", "--module"}, "--module needs a value"},
      {{"--module=", "classes"}, "--module= needs a value"},
      {{"classes", "--module", ""}, "--module: the file name is empty"},
      {{"--module", "a", "--module", "b", "classes"}, "--module is given more than once"},
      {{"--module", "a", "classes", "--module", "b"}, "--module is given more than once"},
      {{"classes", "--module", "a", "--module", "b"}, "--module is given more than once"},
      {{"send"}, "CLASS is missing"},
      {{"send", "Sound"}, "FILE is missing"},
      {{"send", "--event", "trap", "Sound"}, "FILE is missing"},
      {{"send", "Sound", "x", "y"}, "'y' is not an argument of send"},
      {{"send", "Sound", "x", ""}, "'' is not an argument of send"},
      {{"send", "Sound", "-x"}, "'-x' is not an option of send"},
      {{"send", "--verbose"}, "'--verbose' is not an option of send"},
      {{"send", "Sound", "x", "--Event", "trap"},
       "'--Event' is not an option of send; did you mean --event?"},
      {{"send", "Sound", "x", "--event"}, "--event needs a value"},
      {{"send", "--event=", "Sound", "x"}, "--event= needs a value"},
      {{"send", "Sound", "x", "--timeout", "soon"},
       "--timeout: 'soon' is no number of seconds from 0.001 to 86400"},
      {{"send", "Sound", "x", "--timeout", "nan"},
       "--timeout: 'nan' is no number of seconds from 0.001 to 86400"},
      {{"send", "Sound", "x", "--timeout", "5s"},
       "--timeout: '5s' is no number of seconds from 0.001 to 86400"},
      {{"send", "Sound", "x", "--timeout", "0"},
       "--timeout: '0' is no number of seconds from 0.001 to 86400"},
      {{"send", "Sound", "x", "--timeout", "-1"},
       "--timeout: '-1' is no number of seconds from 0.001 to 86400"},
      {{"send", "Sound", "x", "--timeout", "86401"},
       "--timeout: '86401' is no number of seconds from 0.001 to 86400"},
      {{"send", "Sound", "x", "--journal="}, "--journal= needs a value"},
      {{"send", "Sound", "x", "--journal", ""}, "--journal: the file name is empty"},
      {{"classes", "--log-file"}, "--log-file needs a value"},
      {{"classes", "--log-file", ""}, "--log-file: the file name is empty"},
      {{"completion"}, "SHELL is missing"},
      {{"completion", "cmd.exe"},
       "SHELL: 'cmd.exe' is not a shell that completes; the shells are bash and powershell"},
      {{"completion", "powershel"},
       "SHELL: 'powershel' is not a shell that completes; did you mean 'powershell'?"},
      {{"send", "Sound", "x", "--event", ""}, "--event: '' is not an event; " + events},
      {{"send", "Sound", "x", "--event", "down"}, "--event: 'down' is not an event; " + events},
      {{"send", "Sound", "x", "--event", "-1"}, "--event: '-1' is not an event; " + events},
      {{"send", "Sound", "x", "--event", "4294967296"},
       "--event: '4294967296' is not an event; " + events},
      {{"send", "Sound", "x", "--event", "0x"}, "--event: '0x' is not an event; " + events},
      {{"send", "--event", "--set", "n=1", "Sound", "x"},
       "--event: '--set' is not an event; " + events},
      {{"send", "Sound", "x", "--event", "trap", "--event", "trap"},
       "--event is given more than once"},
      {{"send", "Sound", "x", "--set"}, "--set needs a value"},
      {{"send", "Sound", "x", "--set="}, "--set= needs a value"},
      {{"send", "Sound", "x", "--set", ""}, "--set: '' is not of the form LETTER=VALUE"},
      {{"send", "Sound", "x", "--set", "n"}, "--set: 'n' is not of the form LETTER=VALUE"},
      {{"send", "Sound", "x", "--set", "=1"}, "--set: '=1' is not of the form LETTER=VALUE"},
      {{"send", "Sound", "x", "--set", "nn=1"}, "--set: 'nn=1' is not of the form LETTER=VALUE"},
      {{"send", "Sound", "x", "--set", "%n=1"}, "--set: '%n=1' is not of the form LETTER=VALUE"},
      {{"send", "Sound", "x", "--set", "5=1"}, "--set: '5=1' is not of the form LETTER=VALUE"},
      {{"send", "Sound", "x", "--set", "n=1", "--set", "C"},
       "--set: 'C' is not of the form LETTER=VALUE"},
      {{"send", "Sound", "x", "--set", "{}"}, "--set: '{}' is not of the form LETTER=VALUE"},
      {{"add"}, "CLASS is missing"},
      {{"add", "Sound"}, "DIR is missing"},
      {{"add", "Sound", ""}, "DIR: the name is empty"},
      {{"add", "Sound", ".", "x"}, "'x' is not an argument of add"},
      {{"add", "Sound", ".", "--event", "trap"}, "'--event' is not an option of add"},
      {{"edit", "Sound", "."}, "NAME is missing"},
      {{"edit", "Sound", ".", "x", "y"}, "'y' is not an argument of edit"},
      {{"edit", "--force", "Sound", ".", "x"}, "'--force' is not an option of edit"},
      {{"instances"}, "DIR is missing"},
      {{"instances", ""}, "DIR: the name is empty"},
      {{"instances", ".", "."}, "'.' is not an argument of instances"},
      {{"instances", ".", "--jsno"},
       "'--jsno' is not an option of instances; did you mean --json?"},
      {{"instances", ".", "--module", "a.dll"}, "'--module' is not an option of instances"},
      {{"show"}, "FILE is missing"},
      {{"show", "--json"}, "FILE is missing"},
      {{"show", ""}, "FILE: the name is empty"},
      {{"show", "x", "y"}, "'y' is not an argument of show"},
      {{"show", "x", "--json", "--json"}, "--json is given more than once"},
      {{"show", "x", "--json=1"}, "--json takes no value"},
      {{"show", "--json=", "x"}, "--json takes no value"},
      {{"show", "--json=false", "x"}, "--json takes no value"},
      {{"--module", "a.dll", "show", "x"}, "'--module' is not an option of show"},
      {{"--json", "show", "x"}, "'--json' is out of place in notifyhost show [OPTIONS] FILE"},
      {{"new"}, "CLASS is missing"},
      {{"new", "Sound"}, "FILE is missing"},
      {{"new", "Sound", "", "x=y"}, "FILE: the name is empty"},
      {{"new", "Sound", "x", "y"}, "'y' is not of the form FIELD=VALUE"},
      {{"new", "Sound", "x", ""}, "'' is not of the form FIELD=VALUE"},
      {{"new", "Sound", "x", "=y"}, "'=y' is not of the form FIELD=VALUE"},
      {{"new", "Sound", "x", "{}"}, "'{}' is not of the form FIELD=VALUE"},
      {{"new", "Sound", "x", "[]"}, "'[]' is not of the form FIELD=VALUE"},
      {{"new", "Sound", "x", "a=1", "b"}, "'b' is not of the form FIELD=VALUE"},
      {{"new", "Sound", "x", "--wave=1"}, "'--wave=1' is not an option of new"},
      {{"new", "Sound", "x", "--force", "--force"}, "--force is given more than once"},
      {{"new", "Sound", "x", "--force=yes"}, "--force takes no value"},
      {{"new", "Sound", "x", "--module", "a.dll"}, "'--module' is not an option of new"},
      {{"--force", "new", "Sound", "x"},
       "'--force' is out of place in notifyhost new [OPTIONS] CLASS FILE [FIELDS ...]"},
      {{"fields"}, "CLASS is missing"},
      {{"fields", "Sound", "wave"}, "'wave' is not an argument of fields"},
  };
  return usages;
}

TEST(CommandLine, NamesTheArgumentThatIsWrong) {
  for (const WrongUsage& usage : WrongUsages()) {
    const auto parsed = ParseCommandLine(usage.arguments);
    const auto* const error = std::get_if<UsageError>(&parsed);
    ASSERT_NE(error, nullptr) << ::testing::PrintToString(usage.arguments);
    EXPECT_THAT(error->text, StartsWith("notifyhost: " + usage.fault + "\nRun notifyhost "))
        << ::testing::PrintToString(usage.arguments);
  }
}

TEST(CommandLine, TellsWhereHelpIs) {
  EXPECT_EQ(std::get<UsageError>(ParseCommandLine({"frobnicate", "--x"})).text,
            "notifyhost: 'frobnicate' is not a command; the commands are classes, register, "
            "unregister, status, doctor, preview, send, test, history, watch, serve, conformance, "
            "add, edit, instances, show, new, set, fields, ports, settings, service, completion "
            "and help\n"
            "Run notifyhost --help for help.\n");
  EXPECT_EQ(std::get<UsageError>(ParseCommandLine({"send", "Sound"})).text,
            "notifyhost: FILE is missing\nRun notifyhost send --help for help.\n");
  EXPECT_EQ(std::get<UsageError>(ParseCommandLine({"settings", "get", "Pager"})).text,
            "notifyhost: NAME is missing\nRun notifyhost settings get --help for help.\n");
}

TEST(CommandLine, GivesHelp) {
  const std::string help = Help({"--help"});
  EXPECT_EQ(Help({"-h"}), help);
  for (const char* part :
       {"Usage: notifyhost [OPTIONS] COMMAND [ARGUMENTS]\n", "  classes  ", "  register  ",
        "  unregister  ", "  send  ", "  add  ", "  edit  ", "  instances  ", "  show  ", "  new  ",
        "  fields  ", "  --module FILE  ", "Exit codes: 0 ",
        "Examples:\n  notifyhost register\n"}) {
    EXPECT_THAT(help, HasSubstr(part));
  }
}

// As help lists them below "Commands:", those of a group with the group's name before them.
std::vector<std::string> ListedCommands(const Arguments& group) {
  Arguments arguments = group;
  arguments.emplace_back("--help");
  std::istringstream lines(Help(arguments));
  std::vector<std::string> commands;
  bool is_list = false;
  for (std::string line; std::getline(lines, line);) {
    if (is_list && line.empty()) break;
    if (is_list && line[2] != ' ') {
      const std::string name = line.substr(2, line.find(' ', 2) - 2);
      commands.push_back(group.empty() ? name : group.front() + " " + name);
    }
    is_list = is_list || line == "Commands:";
  }
  return commands;
}

std::vector<std::string> EveryCommand() {
  std::vector<std::string> commands = ListedCommands({});
  for (const char* group : {"settings", "service"}) {
    std::erase(commands, group);
    for (std::string& command : ListedCommands({group}))
      commands.push_back(std::move(command));
  }
  return commands;
}

Arguments Words(const std::string& command) {
  std::istringstream words(command);
  return {std::istream_iterator<std::string>(words), {}};
}

Arguments With(Arguments arguments, const std::string& last) {
  arguments.push_back(last);
  return arguments;
}

TEST(CommandLine, ReadsWhatIsServedAndToWhom) {
  const auto served = std::get<ServeCommand>(Accepted({"serve", "C:\\i"}).command);
  EXPECT_EQ(served.directory, "C:\\i");
  EXPECT_EQ(served.address, "127.0.0.1");
  EXPECT_EQ(served.port, 8080);
  const auto others = std::get<ServeCommand>(
      Accepted({"serve", "C:\\i", "--listen", "::", "--port", "0", "--host", "a", "--host", "b:1",
                "--password-file", "p", "--set-password", "--show-secrets", "--journal", "j"})
          .command);
  EXPECT_EQ(others.address, "::");
  EXPECT_EQ(others.port, 0);
  EXPECT_EQ(others.host_names, (std::vector<std::string>{"a", "b:1"}));
  EXPECT_EQ(others.password_file, "p");
  EXPECT_TRUE(others.sets_password && others.shows_secrets);
  EXPECT_EQ(others.journal, "j");
  for (const char* const port : {"-1", "65536", "x", ""})
    EXPECT_TRUE(
        std::holds_alternative<UsageError>(ParseCommandLine({"serve", "C:\\i", "--port", port})))
        << port;
}

TEST(CommandLine, GivesHelpOnEachCommand) {
  EXPECT_EQ(EveryCommand().size(), 33U);
  for (const std::string& command : EveryCommand()) {
    const std::string help = Help(With(Words(command), "--help"));
    EXPECT_EQ(Help(With(Words(command), "-h")), help);
    Arguments behind = Words(command);
    behind.insert(behind.begin(), "help");
    EXPECT_EQ(Help(behind), help);
    EXPECT_THAT(help, HasSubstr("Usage: notifyhost " + command + " [OPTIONS]"));
    EXPECT_THAT(help, HasSubstr("Examples:\n  notifyhost " + command));
  }
  EXPECT_EQ(Help({"--help", "send"}), Help({"send", "--help"}));
  const std::string help = Help({"send", "--help"});
  for (const char* part :
       {" CLASS FILE\n", "  CLASS  ", "  FILE  ", "  --event EVENT  ", "  --set LETTER=VALUE  ",
        "item-up", "item-down", "service-up", "service-down", "trap", "none"}) {
    EXPECT_THAT(help, HasSubstr(part));
  }
}

TEST(CommandLine, GivesTheSameHelpByACommand) {
  EXPECT_EQ(Help({"help"}), Help({"--help"}));
  EXPECT_EQ(Help({"help", "send"}), Help({"send", "--help"}));
  EXPECT_EQ(Help({"help", "settings"}), Help({"settings", "--help"}));
  EXPECT_EQ(Help({"help", "settings", "get"}), Help({"settings", "get", "--help"}));
  EXPECT_THAT(Help({"help", "settings", "get"}),
              HasSubstr("Usage: notifyhost settings get [OPTIONS] CLASS NAME\n"));
  EXPECT_THAT(Help({"help", "settings"}), HasSubstr("Usage: notifyhost settings COMMAND"));
  EXPECT_THAT(Help({"help", "doctor"}), HasSubstr("Usage: notifyhost doctor [OPTIONS] [PATH]\n"));
}

TEST(CommandLine, TellsItsVersion) {
  EXPECT_EQ(Help({"--version"}), std::string("notifyhost ").append(ProgramVersion()) + "\n");
}

TEST(CommandLine, OffersAModuleWhereItIsUsed) {
  for (const char* command :
       {"classes", "register", "unregister", "send", "add", "edit", "doctor", "status"}) {
    EXPECT_THAT(Help({command, "--help"}), HasSubstr("  --module FILE  ")) << command;
  }
  for (const char* command : {"instances", "show", "new", "fields", "set", "ports"}) {
    EXPECT_THAT(Help({command, "--help"}), Not(HasSubstr("--module"))) << command;
  }
}

TEST(CommandLine, OffersAReportForProgramsButWhereTextIsTakenAsItIs) {
  for (const std::string& command : EveryCommand()) {
    const bool is_text =
        command == "help" || command == "completion" || command == "settings export";
    EXPECT_EQ(Help(With(Words(command), "-h")).find("  --json  ") == std::string::npos, is_text)
        << command;
  }
}

TEST(CommandLine, NamesTheOptionThatACommandDoesNotHave) {
  for (const std::string& command : EveryCommand()) {
    const auto parsed = ParseCommandLine(With(Words(command), "--no-such"));
    EXPECT_THAT(std::get<UsageError>(parsed).text,
                HasSubstr("'--no-such' is not an option of " + command + "\n"));
  }
}

TEST(CommandLine, FitsItsHelpIntoATerminal) {
  for (const Arguments& arguments : std::vector<Arguments>{{"-h"},
                                                           {"classes", "-h"},
                                                           {"register", "-h"},
                                                           {"send", "-h"},
                                                           {"add", "-h"},
                                                           {"edit", "-h"},
                                                           {"instances", "-h"},
                                                           {"show", "-h"},
                                                           {"new", "-h"},
                                                           {"fields", "-h"},
                                                           {"doctor", "-h"},
                                                           {"set", "-h"},
                                                           {"status", "-h"},
                                                           {"ports", "-h"},
                                                           {"settings", "-h"},
                                                           {"settings", "set", "-h"},
                                                           {"settings", "reset", "-h"},
                                                           {"settings", "import", "-h"},
                                                           {"unregister", "-h"}}) {
    std::istringstream help(Help(arguments));
    std::string line;
    while (std::getline(help, line)) {
      EXPECT_LE(line.size(), 80U) << line;
    }
  }
}

}  // namespace
}  // namespace brantel::host
