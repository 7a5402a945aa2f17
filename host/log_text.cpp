#include "host/log_text.h"

#include <cstddef>
#include <cstdint>

namespace brantel::host {
namespace {

struct ControlCharacter {
  std::uint8_t number = 0;
  std::size_t size = 0;  // in bytes; 0 when there is none
};

// The control character that `text` starts with. U+0080 to U+009F count, since terminals obey those
// too; UTF-8 writes each as the byte C2 and its number.
ControlCharacter ControlCharacterAt(std::string_view text) {
  const auto first = static_cast<std::uint8_t>(text[0]);
  if (first < 0x20 || first == 0x7F) return {first, 1};
  if (first == 0xC2 && text.size() > 1) {
    const auto second = static_cast<std::uint8_t>(text[1]);
    if (second >= 0x80 && second <= 0x9F) return {second, 2};
  }
  return {};
}

void AppendNumber(std::string& rendered, std::uint8_t number) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  rendered += '<';
  rendered += kDigits[number >> 4U];
  rendered += kDigits[number & 0x0FU];
  rendered += '>';
}

}  // namespace

void LogText::AppendLineEnd(std::string& rendered) {
  rendered += '\n';
  at_line_start_ = true;
}

std::string LogText::Render(std::string_view text) {
  std::string rendered;
  while (!text.empty()) {
    const char c = text[0];
    const bool completes_line_end = after_carriage_return_ && c == '\n';
    after_carriage_return_ = c == '\r';
    if (c == '\r' || c == '\n') {
      if (!completes_line_end) AppendLineEnd(rendered);
      text.remove_prefix(1);
      continue;
    }
    at_line_start_ = false;
    const ControlCharacter control = ControlCharacterAt(text);
    if (control.size == 0) {
      rendered += c;
      text.remove_prefix(1);
    } else {
      AppendNumber(rendered, control.number);
      text.remove_prefix(control.size);
    }
  }
  return rendered;
}

}  // namespace brantel::host
