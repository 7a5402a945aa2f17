#include "host/text/log_text.h"

#include "host/text/control_characters.h"

namespace brantel::host {

void LogText::AppendLineEnd(std::string& rendered) {
  rendered += '\n';
  at_line_start_ = true;
}

std::string LogText::Render(std::string_view text) {
  std::string rendered;
  while (!text.empty()) {
    const std::string_view within_line = text.substr(0, text.find_first_of("\r\n"));
    if (!within_line.empty()) {
      rendered += ShowControlCharacters(within_line);
      at_line_start_ = false;
      after_carriage_return_ = false;
      text.remove_prefix(within_line.size());
      continue;
    }
    const bool completes_line_end = after_carriage_return_ && text[0] == '\n';
    after_carriage_return_ = text[0] == '\r';
    if (!completes_line_end) AppendLineEnd(rendered);
    text.remove_prefix(1);
  }
  return rendered;
}

}  // namespace brantel::host
