#include "smtp_mail/message/header_encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "smtp_mail/message/charset.h"
#include "text/japanese_code.h"
#include "text/japanese_text.h"

namespace brantel {
namespace {

constexpr char kEscape = '\x1B';
constexpr std::string_view kEncodedWordEnd = "?=";

constexpr bool IsHighByte(char c) {
  return static_cast<std::uint8_t>(c) >= 127;
}

constexpr bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

constexpr bool NeedsEncoding(char c) {
  return IsHighByte(c) || c == kEscape;
}

std::size_t CountPlainBytes(std::string_view text, std::size_t at_most) {
  const std::string_view head = text.substr(0, at_most);
  return static_cast<std::size_t>(std::ranges::find_if(head, NeedsEncoding) - head.begin());
}

// What is left of a text behind the last of some of its bytes; all of it when there is none.
template <typename Predicate>
std::string_view BehindLast(std::string_view text, Predicate predicate) {
  const auto last = std::find_if(text.rbegin(), text.rend(), predicate);
  return text.substr(static_cast<std::size_t>(text.rend() - last));
}

// Japanese text of this code as the 7-bit encoding that its label announces.
std::string ToLabelledJapanese(JapaneseCode code, std::string_view text, int room) {
  constexpr std::size_t kCapacity = 1024;
  switch (code) {
    case JapaneseCode::kEucJp:
      return EucJpToJis(text, kCapacity);
    case JapaneseCode::kShiftJis:
    case JapaneseCode::kEucJpOrShiftJis:
      return ShiftJisToJis(text, static_cast<std::size_t>(room));
    default:
      return std::string(text);
  }
}

// A text as far as its first line end, and the line end with which it ends.
std::string WithoutInnerLineEnds(std::string_view text) {
  const std::string_view line_end = BehindLast(text, [](char c) { return !IsLineEnd(c); });
  const std::string_view line(text.begin(), std::ranges::find_if(text, IsLineEnd));
  return std::string(line).append(line_end);
}

// What stands for each byte in an encoded-word; NUL where that is its hexadecimal form. Of the
// bytes that RFC 2047 allows, all but the blank stand for themselves.
constexpr char kHexadecimal = '\0';
constexpr std::array<char, 256> MakeLiterals() {
  std::array<char, 256> literals{};
  for (const char c : std::string_view("!#$%&'*+-\\^`{|}~"
                                       "0123456789"
                                       "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                       "abcdefghijklmnopqrstuvwxyz")) {
    literals.at(static_cast<std::uint8_t>(c)) = c;
  }
  literals.at(' ') = '_';
  return literals;
}
constexpr std::array<char, 256> kLiterals = MakeLiterals();

constexpr int kLongestEncodedText = 55;

// The text of an encoded-word in the making.
class EncodedText {
 public:
  void Append(char c) { characters_.at(size_++) = c; }

  void AppendHexadecimal(char c) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<std::uint8_t>(c);
    Append('=');
    Append(kDigits[byte >> 4U]);
    Append(kDigits[byte & 0xFU]);
  }

  [[nodiscard]] int size() const { return static_cast<int>(size_); }
  [[nodiscard]] std::string_view view() const { return {characters_.data(), size_}; }

 private:
  // The closing sequence of Japanese text can come behind all but one of the others.
  static constexpr std::size_t kClosingSequence = std::string_view("=1B=28B").size();

  std::array<char, kLongestEncodedText - 1 + kClosingSequence> characters_{};
  std::size_t size_ = 0;
};

}  // namespace

bool HasHighBytes(std::string_view text) {
  return std::ranges::any_of(text, IsHighByte);
}

std::size_t QEncode(std::string_view text, std::string& destination, int room) {
  constexpr std::size_t kEscapeSequence = 3;
  const int longest = std::min(room - 2, kLongestEncodedText);
  const std::size_t end = text.size() - BehindLast(text, NeedsEncoding).size();
  const std::size_t last_escape = text.rfind(kEscape);

  EncodedText encoded;
  std::size_t position = 0;
  while (encoded.size() < longest && position < end) {
    const char c = text[position];
    const char literal = kLiterals.at(static_cast<std::uint8_t>(c));
    if (literal != kHexadecimal) {
      encoded.Append(literal);
    } else if (position == last_escape && text.size() - position >= kEscapeSequence) {
      encoded.AppendHexadecimal(c);
      encoded.AppendHexadecimal(text[position + 1]);
      encoded.Append('B');
      position += kEscapeSequence;
      break;
    } else if (IsLineEnd(c) || encoded.size() > longest - 3) {
      break;
    } else {
      encoded.AppendHexadecimal(c);
    }
    ++position;
  }
  destination += encoded.view();
  return position;
}

std::string EncodeHeaderText(std::string_view text, unsigned code_page, int limit) {
  const auto longest = static_cast<std::size_t>(limit - 2);
  const std::size_t plain = CountPlainBytes(text, longest);
  std::string encoded(text.substr(0, plain));
  if (plain == text.size() || plain == longest) return encoded;

  std::string_view rest = text.substr(plain);
  const Charset* const charset = FindCharset(code_page);
  if (charset == nullptr) return encoded.append(rest);

  const int room = limit - (static_cast<int>(plain) + charset->reserve);
  if (room <= 2) return encoded;

  std::string japanese;
  JapaneseCode japanese_code = JapaneseCode::kNone;
  if (code_page == kJapaneseCodePage) {
    japanese_code = DetectJapaneseCode(rest);
    japanese = ToLabelledJapanese(japanese_code, rest, room);
    rest = japanese;
  }
  encoded.reserve(plain + static_cast<std::size_t>(charset->reserve) + kLongestEncodedText +
                  rest.size());
  encoded += charset->encoded_word_prefix;
  rest.remove_prefix(QEncode(rest, encoded, room));
  encoded += kEncodedWordEnd;
  const std::string_view tail = BehindLast(rest, IsHighByte);
  // This conversion alone makes line ends, of what is no character; each would begin a header.
  if (japanese_code == JapaneseCode::kEucJp) return encoded.append(WithoutInnerLineEnds(tail));
  return encoded.append(tail);
}

}  // namespace brantel
