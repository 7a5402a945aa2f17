#pragma once

#include <algorithm>
#include <string_view>

namespace brantel::host {

// Not std::tolower, which asks the locale.
constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// For sorting: letter case aside, in the order of the characters' numbers.
constexpr bool ComesBeforeIgnoringCase(std::string_view one, std::string_view other) {
  const auto number = [](char c) { return static_cast<unsigned char>(LowerCase(c)); };
  return std::ranges::lexicographical_compare(one, other, {}, number, number);
}

// Whether the texts differ in the case of English letters at most.
constexpr bool EqualIgnoringCase(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, LowerCase, LowerCase);
}

}  // namespace brantel::host
