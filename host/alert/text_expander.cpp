#include "host/alert/text_expander.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/text/control_characters.h"
#include "host/text/letter_case.h"

namespace brantel::host {
namespace {

bool IsNoDigit(char c) {
  return c < '0' || c > '9';
}

bool IsOfPath(char c) {
  return c == '\\' || c == '/' || c == ':';
}

// What a class's texts must not get.
struct ClassRule {
  std::string_view class_name;
  bool (*is_taken_out)(char c);
};

constexpr std::array kClassRules = {ClassRule{"Beeper", IsNoDigit}, ClassRule{"Voice", IsOfPath}};

std::string HarmlessValue(std::string_view value, std::string_view class_name) {
  std::string harmless = BlankControlCharacters(value);
  for (const ClassRule& rule : kClassRules) {
    if (EqualIgnoringCase(rule.class_name, class_name)) std::erase_if(harmless, rule.is_taken_out);
  }
  return harmless;
}

bool EndsLine(const std::string& text, std::size_t at) {
  return at == text.size() || text[at] == '\r' || text[at] == '\n';
}

bool BeginsLine(const std::string& text, std::size_t at) {
  return at == 0 || EndsLine(text, at - 1);
}

MessageVariables HarmlessVariables(const MessageVariables& variables, std::string_view class_name) {
  MessageVariables harmless;
  for (const std::string& assignment : variables.assignments()) {
    const std::string letter = assignment.substr(0, 2);
    harmless.Assign(letter + HarmlessValue(std::string_view(assignment).substr(2), class_name));
  }
  return harmless;
}

std::string WithoutLoneFullStops(std::string text) {
  for (std::size_t at = 0; (at = text.find('.', at)) != std::string::npos; ++at) {
    if (BeginsLine(text, at) && EndsLine(text, at + 1)) text.insert(at++, 1, '.');
  }
  return text;
}

}  // namespace

TextExpander PlainExpander(const MessageVariables& variables) {
  return [variables](std::string_view text) { return variables.Expand(text); };
}

TextExpander HarmlessExpander(const MessageVariables& variables, std::string_view class_name) {
  TextExpander expand = PlainExpander(HarmlessVariables(variables, class_name));
  if (!EqualIgnoringCase(class_name, "SMTPMail")) return expand;
  return [expand](std::string_view text) { return WithoutLoneFullStops(expand(text)); };
}

TextExpander ExpanderFor(const MessageVariables& variables, std::string_view class_name,
                         bool takes_raw_values) {
  return takes_raw_values ? PlainExpander(variables) : HarmlessExpander(variables, class_name);
}

}  // namespace brantel::host
