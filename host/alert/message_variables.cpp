#include "host/alert/message_variables.h"

namespace brantel::host {
namespace {

// Not std::isalpha, which asks the locale.
bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

}  // namespace

bool MessageVariables::Assign(std::string_view assignment) {
  if (assignment.size() < 2 || !IsLetter(assignment[0]) || assignment[1] != '=') return false;
  values_[assignment[0]] = assignment.substr(2);
  return true;
}

std::vector<std::string> MessageVariables::assignments() const {
  std::vector<std::string> assignments;
  for (const auto& [letter, value] : values_)
    assignments.push_back(letter + ("=" + value));
  return assignments;
}

std::string MessageVariables::Expand(std::string_view message_template) const {
  std::string text;
  std::string_view rest = message_template;
  while (!rest.empty()) {
    const std::string_view plain = rest.substr(0, rest.find('%'));
    text += plain;
    rest.remove_prefix(plain.size());
    const std::string_view variable = rest.substr(0, 2);
    if (variable.size() < 2) return text.append(variable);

    const auto value = values_.find(variable[1]);
    if (value != values_.end()) {
      text += value->second;
      rest.remove_prefix(2);
    } else {
      // A "%" before something else stands for itself, and what follows is read on its own.
      text += '%';
      rest.remove_prefix(variable[1] == '%' ? 2 : 1);
    }
  }
  return text;
}

}  // namespace brantel::host
