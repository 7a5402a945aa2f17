// Escaping: the result has no markup but entities, and a browser reads it back as the text.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "web/html_text.h"

namespace {

constexpr std::array<std::pair<std::string_view, char>, 4> kEntities = {
    {{"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&amp;", '&'}}};

// Takes the first character, which may be an entity, off the text.
char TakeCharacter(std::string_view& html) {
  for (const auto& [entity, character] : kEntities) {
    if (!html.starts_with(entity)) continue;
    html.remove_prefix(entity.size());
    return character;
  }
  const char character = html.front();
  if (character == '<' || character == '>' || character == '"' || character == '&') std::abort();
  html.remove_prefix(1);
  return character;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  brantel::HtmlText html(size);
  html.AppendEscaped(text);
  std::string read_back;
  for (std::string_view rest = html.view(); !rest.empty();)
    read_back += TakeCharacter(rest);
  if (read_back != text) std::abort();
  return 0;
}
