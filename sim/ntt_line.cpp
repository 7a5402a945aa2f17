#include "sim/ntt_line.h"

#include <algorithm>
#include <regex>

namespace brantel::sim {
namespace {

constexpr std::size_t kLongestText = 100;

bool IsWithin(char c, unsigned first, unsigned last) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= first && byte <= last;
}

bool IsSingle(char c) {
  return IsWithin(c, 0x20, 0x7E) || IsWithin(c, 0xA1, 0xDF);
}

bool IsLead(char c) {
  return IsWithin(c, 0x81, 0x9F) || IsWithin(c, 0xE0, 0xFC);
}

bool IsTrail(char c) {
  return IsWithin(c, 0x40, 0x7E) || IsWithin(c, 0x80, 0xFC);
}

bool IsShiftJis(std::string_view text) {
  while (!text.empty()) {
    const bool is_pair = text.size() > 1 && IsLead(text[0]) && IsTrail(text[1]);
    if (!is_pair && !IsSingle(text[0])) return false;
    text.remove_prefix(is_pair ? 2 : 1);
  }
  return true;
}

}  // namespace

std::variant<NttPage, NttFault> ReadNttLine(std::string_view line) {
  static const std::regex head(
      R"(8000C00000\*{8},10000,(?=.{15},)([0-9]*)A*,(AAAA|.{4}),([0-9]{3}))");
  std::cmatch parts;
  const char* const end = line.data() + line.size();
  if (!std::regex_search(line.data(), end, parts, head, std::regex_constants::match_continuous)) {
    return NttFault{"layout"};
  }
  const std::string text = parts.suffix();
  const std::string length = parts[3];
  if (parts[1].length() == 0) return NttFault{"no pager ID"};
  if (text.size() != std::stoul(length)) {
    return NttFault{"length " + length + " instead of " + std::to_string(text.size())};
  }
  if (text.size() > kLongestText) return NttFault{"too long"};
  if (!IsShiftJis(text)) return NttFault{"a sign that is no text"};
  return NttPage{parts[1], parts[2] == "AAAA" ? "" : parts[2].str(), text};
}

}  // namespace brantel::sim
