#include "web/html_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace brantel {
namespace {

struct Entity {
  std::array<char, 6> text{};  // the longest one fills it
  std::uint8_t length = 0;
};

// Tells the four markup characters apart.
constexpr std::size_t EntityIndex(char markup) {
  return (static_cast<unsigned char>(markup) >> 1U) & 7U;
}

constexpr std::array<Entity, 8> kEntities = [] {
  std::array<Entity, 8> entities;
  entities[EntityIndex('<')] = {{'&', 'l', 't', ';'}, 4};
  entities[EntityIndex('>')] = {{'&', 'g', 't', ';'}, 4};
  entities[EntityIndex('"')] = {{'&', 'q', 'u', 'o', 't', ';'}, 6};
  entities[EntityIndex('&')] = {{'&', 'a', 'm', 'p', ';'}, 5};
  return entities;
}();

constexpr bool IsMarkup(char c) {
  return c == '<' || c == '>' || c == '"' || c == '&';
}

// Nearly all of a text is free of markup, so sixteen bytes are looked at together.
using Block [[gnu::vector_size(16)]] = unsigned char;
using BlockHalves = std::array<std::uint64_t, 2>;

// All bits of those bytes that are markup. The two characters of each pair differ in a single bit;
// with that bit set they are one character.
BlockHalves MarkupIn(const char* bytes) {
  constexpr unsigned char kQuoteBit = '"' ^ '&';
  constexpr unsigned char kBracketBit = '<' ^ '>';
  Block block;  // NOLINT(*-member-init, *-init-variables): filled by the copy
  std::memcpy(&block, bytes, sizeof block);
  return std::bit_cast<BlockHalves>(((block | kQuoteBit) == ('"' | kQuoteBit)) |
                                    ((block | kBracketBit) == ('<' | kBracketBit)));
}

std::size_t FirstByteSet(std::uint64_t half) {
  const int zeros =
      std::endian::native == std::endian::little ? std::countr_zero(half) : std::countl_zero(half);
  return static_cast<std::size_t>(zeros) / 8;
}

std::size_t CopyShortUntilMarkup(std::string_view text, char* to) {
  std::size_t done = 0;
  for (; done < text.size() && !IsMarkup(text[done]); ++done)
    to[done] = text[done];
  return done;
}

// Copies the text up to its first markup, or all of it, and returns how much that was. Behind that,
// up to a block of bytes is written that means nothing.
std::size_t CopyUntilMarkup(std::string_view text, char* to) {
  if (text.size() < sizeof(Block)) return CopyShortUntilMarkup(text, to);
  // The last block ends with the text and may begin within the one before it.
  const std::size_t last = text.size() - sizeof(Block);
  for (std::size_t place = 0;; place = std::min(place + sizeof(Block), last)) {
    std::memcpy(to + place, text.data() + place, sizeof(Block));
    const BlockHalves markup = MarkupIn(text.data() + place);
    if (markup[0] != 0) return place + FirstByteSet(markup[0]);
    if (markup[1] != 0) return place + sizeof(Block) / 2 + FirstByteSet(markup[1]);
    if (place == last) return text.size();
  }
}

// Returns the end of what was written. There has to be room for the longest entity at every byte.
char* CopyEscaped(std::string_view text, char* to) {
  while (true) {
    const std::size_t copied = CopyUntilMarkup(text, to);
    to += copied;
    if (copied == text.size()) return to;
    const Entity& entity = kEntities[EntityIndex(text[copied])];
    std::memcpy(to, entity.text.data(), entity.text.size());
    to += entity.length;
    text.remove_prefix(copied + 1);
  }
}

}  // namespace

void HtmlText::Append(std::string_view html) {
  html.copy(Room(html.size()), html.size());
  size_ += html.size();
}

void HtmlText::AppendEscaped(std::string_view text) {
  // In pieces, so that the room for the worst case stays small.
  constexpr std::size_t kPiece = 1024;
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, kPiece);
    char* const end = Room(piece.size() * Entity{}.text.size());
    size_ += static_cast<std::size_t>(CopyEscaped(piece, end) - end);
    text.remove_prefix(piece.size());
  }
}

char* HtmlText::Room(std::size_t count) {
  if (capacity_ - size_ < count) Grow(count);
  return text_.get() + size_;
}

void HtmlText::Grow(std::size_t count) {
  const std::size_t capacity = std::max(2 * capacity_, size_ + count);
  auto larger = std::make_unique_for_overwrite<char[]>(capacity);
  view().copy(larger.get(), size_);
  text_ = std::move(larger);
  capacity_ = capacity;
}

}  // namespace brantel
