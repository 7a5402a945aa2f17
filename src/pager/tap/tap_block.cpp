#include "pager/tap/tap_block.h"

#include <algorithm>
#include <cstdint>

#include "pager/centre/pager_id.h"

namespace brantel {
namespace {

constexpr char kStartOfText = '\x02';
constexpr char kEndOfText = '\x03';
constexpr char kCarriageReturn = '\r';

std::string IdField(std::string_view pager_id, const TapBlockRules& rules) {
  if (rules.skips_leading_zeros) {
    pager_id.remove_prefix(std::min(pager_id.find_first_of("123456789"), pager_id.size()));
  }
  return DigitsOf(pager_id);
}

constexpr bool IsPrintable(char c) {
  return c >= '\x20' && c <= '\x7E';
}

std::string MessageField(std::string_view message, std::size_t room) {
  std::string field;
  for (const char c : message) {
    if (field.size() >= room) break;
    if (c == kCarriageReturn) {
      field += ' ';
    } else if (IsPrintable(c)) {
      field += c;
    }
  }
  return field;
}

}  // namespace

std::string BuildTapBlock(std::string_view pager_id, std::string_view message,
                          const TapBlockRules& rules) {
  const std::string id = IdField(pager_id, rules);
  const std::size_t used = id.size() + 1;
  std::string block;
  block += kStartOfText;
  block += id;
  block += kCarriageReturn;
  block += MessageField(message, rules.capacity - std::min(rules.capacity, used));
  block += kCarriageReturn;
  block += kEndOfText;
  block += TapChecksum(block);
  block += kCarriageReturn;
  return block;
}

std::string TapChecksum(std::string_view block) {
  unsigned sum = 0;
  for (const char c : block) {
    sum += static_cast<std::uint8_t>(c);
  }
  const auto character = [sum](unsigned shift) {
    return static_cast<char>('0' + ((sum >> shift) & 0xFU));
  };
  return {character(8), character(4), character(0)};
}

}  // namespace brantel
