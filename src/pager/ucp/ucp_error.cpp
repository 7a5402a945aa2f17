#include "pager/ucp/ucp_error.h"

#include <cstdint>

#include "text/digits.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr unsigned kFirstRow = 1;
constexpr unsigned kLastRow = 33;

// A character that is not there counts as a NUL.
unsigned CharacterAt(std::string_view text, std::size_t place) {
  return place < text.size() ? static_cast<std::uint8_t>(text[place]) : 0;
}

}  // namespace

std::string UcpErrorText(std::string_view code) {
  const unsigned first = CharacterAt(code, 0);
  const unsigned second = CharacterAt(code, 1);
  // Wraps below 0, and back when the rows' place is added.
  const unsigned row = 16 * first + second - (16 * '0' + '0');
  const unsigned text = text_id::kUcpErrors + row;
  const bool is_code = IsDigit(static_cast<char>(first)) && IsDigit(static_cast<char>(second));
  return is_code && row >= kFirstRow && row <= kLastRow ? LoadText(text) : LookupFailureText(text);
}

}  // namespace brantel
