// Texts that the host of the command line handles for an alert: variables, templates, events and
// the log. A template says the same in parts as in one, the log may come in pieces of any size, and
// nothing of it steers the terminal.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"
#include "host/text/log_text.h"

namespace brantel::host {
namespace {

void CheckTemplate(const MessageVariables& variables, std::string_view whole, std::size_t place) {
  const std::string_view first = whole.substr(0, place);
  const std::string_view second = whole.substr(first.size());
  // A percent sign may begin a variable.
  if (first.ends_with('%')) return;
  Require(variables.Expand(whole) == variables.Expand(first) + variables.Expand(second));
}

// Two percent signs stand for one.
void CheckPlainText(const MessageVariables& variables, std::string_view text) {
  std::string written;
  for (const char c : text)
    written.append(c == '%' ? 2 : 1, c);
  Require(variables.Expand(written) == text);
}

void CheckEvent(std::string_view text) {
  const auto event = ParseAlertEvent(text);
  if (!event) return;
  const std::string number =
      event->trigger_word ? std::to_string(*event->trigger_word) : std::string("none");
  Require(ParseAlertEvent(number) == event);
}

// Log texts are UTF-8, and none is torn within a character.
bool IsTorn(std::string_view first) {
  return !first.empty() && static_cast<std::uint8_t>(first.back()) >= 0xC0;
}

void CheckLog(std::string_view whole, std::size_t place) {
  const std::string_view first = whole.substr(0, place);
  if (IsTorn(first)) return;
  LogText log;
  const std::string shown = log.Render(whole);
  Require(log.at_line_start() == (shown.empty() || shown.ends_with('\n')));
  Require(std::ranges::all_of(shown, [](char c) {
    return c == '\n' || (static_cast<std::uint8_t>(c) >= 0x20 && c != 0x7F);
  }));
  LogText log_in_pieces;
  const std::string pieces = log_in_pieces.Render(first);
  Require(pieces + log_in_pieces.Render(whole.substr(first.size())) == shown);
}

}  // namespace
}  // namespace brantel::host

// A byte for where texts are cut, an assignment, another, an event, and a text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const std::size_t place = input.Byte();
  host::MessageVariables variables;
  for (int i = 0; i < 2; ++i) {
    const std::string_view assignment = input.Field();
    if (!variables.Assign(assignment)) continue;
    Require(variables.Expand(std::string("%") + assignment.front()) == assignment.substr(2));
  }
  host::CheckEvent(input.Field());
  const std::string_view text = input.Take(size);
  host::CheckTemplate(variables, text, place);
  host::CheckPlainText(variables, text);
  host::CheckLog(text, place);
  return 0;
}
