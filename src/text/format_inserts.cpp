#include "text/format_inserts.h"

#include <cstddef>
#include <optional>
#include <span>

namespace brantel {
namespace {

struct Insert {
  std::size_t number;  // from 1
  std::string_view directive;
  std::size_t length;  // of the whole insert
};

// The insert at the front of a text.
std::optional<Insert> FindInsert(std::string_view text) {
  constexpr std::string_view kDigits = "123456789";
  if (text.size() < 3 || text[0] != '%' || text[2] != '!') return std::nullopt;
  const std::size_t digit = kDigits.find(text[1]);
  const std::size_t end = text.find('!', 3);
  if (digit == std::string_view::npos || end == std::string_view::npos) return std::nullopt;
  return Insert{digit + 1, text.substr(3, end - 3), end + 1};
}

std::string ToText(const Insert& insert, std::span<const FormatArgument> arguments) {
  if (insert.number > arguments.size()) return {};
  const FormatArgument& argument = arguments[insert.number - 1];
  const auto* const whole = std::get_if<std::string_view>(&argument);
  if (whole != nullptr && insert.directive == "s") return std::string(*whole);
  return FormatText(std::string("%").append(insert.directive), {argument});
}

}  // namespace

std::string FormatInserts(std::string_view text, std::initializer_list<FormatArgument> arguments) {
  std::string formatted;
  while (!text.empty()) {
    if (const auto insert = FindInsert(text)) {
      formatted += ToText(*insert, {arguments.begin(), arguments.size()});
      text.remove_prefix(insert->length);
      continue;
    }
    formatted += text.front();
    text.remove_prefix(text.starts_with("%%") ? 2 : 1);
  }
  return formatted;
}

}  // namespace brantel
