#include "host/text/control_characters.h"

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

void AppendNumber(std::string& shown, std::uint8_t number) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  shown += '<';
  shown += kDigits[number >> 4U];
  shown += kDigits[number & 0x0FU];
  shown += '>';
}

// The text with what `append` appends in the place of each of its control characters.
template <typename AppendControl>
std::string Replaced(std::string_view text, AppendControl append) {
  std::string replaced;
  while (!text.empty()) {
    const ControlCharacter control = ControlCharacterAt(text);
    if (control.size == 0) {
      replaced += text[0];
      text.remove_prefix(1);
    } else {
      append(replaced, control.number);
      text.remove_prefix(control.size);
    }
  }
  return replaced;
}

}  // namespace

std::string ShowControlCharacters(std::string_view text) {
  return Replaced(text, AppendNumber);
}

std::string BlankControlCharacters(std::string_view text) {
  return Replaced(text, [](std::string& replaced, std::uint8_t) { replaced += ' '; });
}

}  // namespace brantel::host
