#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"
#include "host/instances/class_fields.h"

namespace CLI {
class App;
}

namespace brantel::host {

// Arguments that several commands take: each makes `parser` fill in a variable, which must outlive
// it.
void DeclareClass(CLI::App& parser, std::string& class_name);
void DeclareDirectory(CLI::App& parser, std::string& directory);

// A directory or file that may be left out; `path` stays empty then.
void DeclareOptionalPath(CLI::App& parser, const std::string& argument, std::string& path,
                         const std::string& description);

// An option whose value is a file that has to have a name.
void DeclareFileOption(CLI::App& parser, const std::string& option, std::string& file,
                       const std::string& description);

// A file that has to have a name.
void DeclareFile(CLI::App& parser, std::string& file, const std::string& description);

// FIELD=VALUE, any number of times, or NAME=VALUE, as `argument` and `form` say.
void DeclareAssignments(CLI::App& parser, const std::string& argument, const std::string& form,
                        std::vector<FieldValue>& values, const std::string& description);

// Any number of names.
void DeclareNames(CLI::App& parser, const std::string& argument, std::vector<std::string>& names,
                  const std::string& description);

// An option with a text, shown as `form`. Of several the last counts, as of all options with one
// value.
void DeclareText(CLI::App& parser, const std::string& option, const std::string& form,
                 std::string& text, const std::string& description);

// An option with a number from `first` to `last`.
void DeclareNumber(CLI::App& parser, const std::string& option, int& number, int first, int last,
                   const std::string& description);

void DeclareFlag(CLI::App& parser, const char* name, bool& flag, const char* description);
void DeclareShowSecrets(CLI::App& parser, bool& shows_secrets);
void DeclareNoCheck(CLI::App& parser, bool& is_unchecked);

// --event, --set and --raw-values: what an alert tells of.
void DeclareEvent(CLI::App& parser, AlertEvent& event);
void DeclareVariables(CLI::App& parser, MessageVariables& variables);
void DeclareRawValues(CLI::App& parser, bool& takes_raw_values);

// --journal: the file in which attempts at alerts are noted.
void DeclareJournal(CLI::App& parser, std::string& journal);

// --profile, from 0 to 10.
void DeclareProfile(CLI::App& parser, int& profile);

}  // namespace brantel::host
