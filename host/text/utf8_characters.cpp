#include "host/text/utf8_characters.h"

#include <algorithm>
#include <cstdint>

namespace brantel::host {
namespace {

bool StartsCharacter(char c) {
  return (static_cast<std::uint8_t>(c) & 0xC0U) != 0x80U;
}

}  // namespace

std::size_t CountCharacters(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, StartsCharacter));
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  const auto end =
      std::ranges::find_if(text, [&](char c) { return StartsCharacter(c) && count-- == 0; });
  return {text.begin(), end};
}

}  // namespace brantel::host
