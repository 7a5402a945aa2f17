#include "host/watch/toml_characters.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace brantel::host {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Where the string ends that the text begins with, behind its closing quotation marks.
std::size_t StringSize(std::string_view text) {
  const char mark = text[0];
  const std::string three(3, mark);
  const bool is_long = text.starts_with(three);
  const std::string_view closing = is_long ? three : std::string_view(three).substr(0, 1);
  for (std::size_t at = closing.size(); at < text.size(); ++at) {
    if (text[at] == '\\' && mark == '"') {
      ++at;
    } else if (text.substr(at).starts_with(closing)) {
      // Up to two more belong to the string.
      std::size_t end = at + closing.size();
      while (is_long && end < text.size() && text[end] == mark && end < at + 5)
        ++end;
      return end;
    } else if (text[at] == '\n' && !is_long) {
      return at;
    }
  }
  return text.size();
}

// How much of the text belongs to what it begins with. A string begins behind what may stand before
// one; elsewhere its mark is a fault.
std::size_t PartSize(std::string_view text, char before) {
  constexpr std::string_view kBeforeString = " \t\r\n=,.[{";
  if (text[0] == '#') return std::min(text.find('\n'), text.size());
  const bool is_mark = text[0] == '"' || text[0] == '\'';
  return is_mark && kBeforeString.find(before) != std::string_view::npos ? StringSize(text) : 1;
}

}  // namespace

std::optional<std::uint32_t> LineOfForeignCharacter(std::string_view toml) {
  std::uint32_t line = 1;
  std::string_view rest = toml;
  char before = '\n';
  if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
  while (!rest.empty()) {
    if (static_cast<unsigned char>(rest[0]) >= 0x80) return line;
    const std::string_view part = rest.substr(0, PartSize(rest, before));
    line += static_cast<std::uint32_t>(std::ranges::count(part, '\n'));
    before = part.back();
    rest.remove_prefix(part.size());
  }
  return std::nullopt;
}

}  // namespace brantel::host
