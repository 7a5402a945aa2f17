#include "host/course/particulars.h"

#include <cstddef>

#include "host/text/control_characters.h"
#include "host/text/utf8_characters.h"

namespace brantel::host {
namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr std::size_t kMostQuoted = 80;

std::string_view Trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kWhiteSpace);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kWhiteSpace) - begin + 1);
}

}  // namespace

std::string FillIn(std::string_view words, const Particulars& particulars) {
  std::string filled;
  for (std::size_t brace = 0; (brace = words.find('{')) != std::string_view::npos;) {
    filled += words.substr(0, brace);
    const std::size_t bar = words.find('|', brace);
    const std::size_t end = words.find('}', bar);
    const auto particular = particulars.find(words.substr(bar + 1, end - bar - 1));
    if (particular != particulars.end() && !particular->second.empty()) {
      filled += words.substr(brace + 1, bar - brace - 1);
      filled += particular->second;
    }
    words.remove_prefix(end + 1);
  }
  return filled.append(words);
}

std::string Quotable(std::string_view said) {
  const std::string_view trimmed = Trimmed(said);
  const std::string_view shown = FirstCharacters(trimmed, kMostQuoted);
  return ShowControlCharacters(shown) + (shown.size() < trimmed.size() ? "..." : "");
}

}  // namespace brantel::host
