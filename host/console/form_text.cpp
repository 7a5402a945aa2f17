#include "host/console/form_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace brantel::host {
namespace {

constexpr std::size_t kMostPairs = 100;
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

std::optional<unsigned> HexValue(char c) {
  if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
  const std::size_t value = kHexDigits.find(c);
  if (value == std::string_view::npos) return std::nullopt;
  return static_cast<unsigned>(value);
}

// How many bytes the character has that begins with this one; 0 when none does.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

// Whether the second byte belongs to no overlong form, no surrogate and nothing beyond Unicode.
bool IsSecondByte(unsigned char lead, unsigned char second) {
  if ((second & 0xC0U) != 0x80U) return false;
  if (lead == 0xE0) return second >= 0xA0;
  if (lead == 0xED) return second < 0xA0;
  if (lead == 0xF0) return second >= 0x90;
  if (lead == 0xF4) return second < 0x90;
  return true;
}

bool IsUtf8(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = SequenceLength(byte(i));
    if (length == 0 || length > text.size() - i) return false;
    if (length > 1 && !IsSecondByte(byte(i), byte(i + 1))) return false;
    for (std::size_t rest = 2; rest < length; ++rest) {
      if ((byte(i + rest) & 0xC0U) != 0x80U) return false;
    }
    i += length;
  }
  return true;
}

bool IsUnreserved(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '_' || c == '.' || c == '~';
}

// Takes what stands before the separator from the text.
std::string_view CutPiece(std::string_view& text, char separator) {
  const std::string_view piece = text.substr(0, text.find(separator));
  text.remove_prefix(std::min(text.size(), piece.size() + 1));
  return piece;
}

std::optional<std::string> DecodeFormText(std::string_view text) {
  std::string blanks(text);
  std::ranges::replace(blanks, '+', ' ');
  return DecodePercents(blanks);
}

// A name in a path stands for itself and leads nowhere.
bool LeadsElsewhere(std::string_view segment) {
  return segment.empty() || segment == "." || segment == ".." ||
         segment.find_first_of("/\\:") != std::string_view::npos;
}

}  // namespace

std::optional<std::string> DecodePercents(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    if (text.size() - i < 3) return std::nullopt;
    const auto high = HexValue(text[i + 1]);
    const auto low = HexValue(text[i + 2]);
    if (!high || !low) return std::nullopt;
    decoded += static_cast<char>(*high * 16 + *low);
    i += 2;
  }
  if (decoded.find('\0') != std::string::npos || !IsUtf8(decoded)) return std::nullopt;
  return decoded;
}

std::string EncodePercents(std::string_view text) {
  std::string encoded;
  for (const char c : text) {
    if (IsUnreserved(c)) {
      encoded += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    encoded += '%';
    encoded += kHexDigits[byte / 16];
    encoded += kHexDigits[byte % 16];
  }
  return encoded;
}

std::optional<FormValues> FormValues::Parse(std::string_view text) {
  FormValues form;
  while (!text.empty()) {
    std::string_view piece = CutPiece(text, '&');
    const std::string_view name = CutPiece(piece, '=');
    auto decoded_name = DecodeFormText(name);
    auto decoded_value = DecodeFormText(piece);
    if (!decoded_name || !decoded_value || form.pairs_.size() == kMostPairs) return std::nullopt;
    form.pairs_.push_back({*std::move(decoded_name), *std::move(decoded_value)});
  }
  return form;
}

std::string_view FormValues::Get(std::string_view name) const {
  const auto found = std::ranges::find(pairs_, name, &Pair::name);
  return found == pairs_.end() ? std::string_view() : found->value;
}

bool FormValues::Has(std::string_view name) const {
  return std::ranges::find(pairs_, name, &Pair::name) != pairs_.end();
}

std::optional<TargetParts> ParseTarget(std::string_view target) {
  if (!target.starts_with('/')) return std::nullopt;
  std::string_view path = CutPiece(target, '?');
  path.remove_prefix(1);
  auto query = FormValues::Parse(target);
  if (!query) return std::nullopt;
  TargetParts parts{.segments = {}, .query = *std::move(query)};
  // Also behind the last slash there has to be something.
  const bool ends_in_slash = path.ends_with('/');
  while (!path.empty()) {
    auto segment = DecodePercents(CutPiece(path, '/'));
    if (!segment || LeadsElsewhere(*segment)) return std::nullopt;
    parts.segments.push_back(*std::move(segment));
  }
  if (ends_in_slash) return std::nullopt;
  return parts;
}

}  // namespace brantel::host
