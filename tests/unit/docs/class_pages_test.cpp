// The pages of docs/classes: each tells how a class, or a protocol of Pager, is set up, and its
// commands are such as the host takes.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "host/command_line.h"
#include "host/instances/class_fields.h"
#include "host/instances/field_guide.h"
#include "module/class_descriptions.h"
#include "tests/unit/project_file.h"

namespace brantel::host {
namespace {

std::vector<std::string> ClassPages() {
  std::vector<std::string> pages;
  for (const auto& entry : std::filesystem::directory_iterator(ProjectFile("docs/classes"))) {
    pages.push_back("docs/classes/" + entry.path().filename().string());
  }
  return pages;
}

// The words of a command as the system's command interpreter has them.
std::vector<std::string> CommandWords(const std::string& line) {
  std::vector<std::string> words(1);
  bool is_quoted = false;
  for (const char c : line) {
    if (c == '"') {
      is_quoted = !is_quoted;
    } else if (c == ' ' && !is_quoted) {
      words.emplace_back();
    } else {
      words.back() += c;
    }
  }
  return words;
}

// What stands behind the program's name in the lines of a page that begin so.
std::vector<std::vector<std::string>> CommandsOf(const std::string& page,
                                                 const std::string& command) {
  std::vector<std::vector<std::string>> commands;
  std::istringstream lines(ReadProjectFile(page));
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("notifyhost " + command)) continue;
    std::vector<std::string> words = CommandWords(line);
    words.erase(words.begin());
    commands.push_back(std::move(words));
  }
  return commands;
}

Command ParsedCommand(const std::vector<std::string>& words) {
  const auto parsed = ParseCommandLine(words);
  if (const auto* const error = std::get_if<UsageError>(&parsed)) {
    ADD_FAILURE() << ::testing::PrintToString(words) << ": " << error->text;
    return {};
  }
  return std::get<Invocation>(parsed).command;
}

TEST(ClassPages, HaveTheirParts) {
  for (const std::string& page : ClassPages()) {
    const std::string text = ReadProjectFile(page);
    for (const char* const part :
         {"\n## Setting it up\n", "\n## The log\n", "](../pictures/", "](../troubleshooting.md#"}) {
      EXPECT_NE(text.find(part), std::string::npos) << page << " lacks " << part;
    }
  }
}

TEST(ClassPages, HaveCommandsThatTheHostTakes) {
  for (const std::string& page : ClassPages()) {
    for (const char* const command :
         {"settings", "doctor", "ports", "send", "preview", "set", "test", "show", "history"}) {
      for (const auto& words : CommandsOf(page, command)) {
        ParsedCommand(words);
      }
    }
  }
}

TEST(ClassPages, MakeAnInstanceOfEachClassAndProtocol) {
  std::set<std::string> made;
  for (const std::string& page : ClassPages()) {
    for (const auto& words : CommandsOf(page, "new ")) {
      const auto command = std::get<NewCommand>(ParsedCommand(words));
      const InstanceLayout& layout = FindDescription(command.class_name).instances;
      MakeInstance(layout, command.values,
                   [](std::string_view text) { return std::optional(std::string(text)); });
      made.insert(command.class_name);
      for (const FieldValue& value : command.values) {
        if (value.field == "protocol") made.insert(value.value);
      }
    }
  }
  for (const ClassDescription* const notifier_class : ClassDescriptions()) {
    EXPECT_TRUE(made.contains(std::string(notifier_class->instances.class_name)));
  }
  for (const std::string_view protocol : PagerProtocolNames()) {
    EXPECT_TRUE(made.contains(std::string(protocol))) << protocol;
  }
}

}  // namespace
}  // namespace brantel::host
