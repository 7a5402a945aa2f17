#include "mail/header_encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "framework/japanese_code.h"
#include "framework/japanese_text.h"
#include "mail/charset.h"

namespace brantel {
namespace {

constexpr char kEscape = '\x1B';
constexpr std::string_view kEncodedWordEnd = "?=";

constexpr bool IsHighByte(char c) {
  return static_cast<std::uint8_t>(c) >= 127;
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

// Japanese text as the 7-bit encoding that its label announces.
std::string ToLabelledJapanese(std::string_view text, int room) {
  constexpr std::size_t kCapacity = 1024;
  switch (DetectJapaneseCode(text)) {
    case JapaneseCode::kEucJp:
      return EucJpToJis(text, kCapacity);
    case JapaneseCode::kShiftJis:
    case JapaneseCode::kEucJpOrShiftJis:
      return ShiftJisToJis(text, static_cast<std::size_t>(room));
    default:
      return std::string(text);
  }
}

// Bytes that stand for themselves in an encoded-word here. Of those that RFC 2047 allows, the blank
// is none: it becomes an underscore.
constexpr std::array<bool, 256> MakeLiteralTable() {
  std::array<bool, 256> literal{};
  for (const char c : std::string_view("!#$%&'*+-\\^`{|}~"
                                       "0123456789"
                                       "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                       "abcdefghijklmnopqrstuvwxyz")) {
    literal.at(static_cast<std::uint8_t>(c)) = true;
  }
  return literal;
}
constexpr std::array<bool, 256> kIsLiteral = MakeLiteralTable();

void AppendHexadecimal(std::string& destination, char c) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<std::uint8_t>(c);
  destination += {'=', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
}

// One encoded-word in the making.
class QEncoder {
 public:
  QEncoder(std::string_view text, std::string& destination, int room)
      : text_(text),
        end_of_encoding_(text.size() - BehindLast(text, NeedsEncoding).size()),
        last_escape_(text.rfind(kEscape)),
        destination_(destination),
        longest_(std::min(room - 2, 55)),
        longest_for_hexadecimal_(std::min(room - 5, 52)) {}

  std::size_t Encode() {
    while (written_ < longest_ && position_ < end_of_encoding_ && EncodeNext()) {
    }
    return position_;
  }

 private:
  // False when encoding ends here.
  bool EncodeNext() {
    const char c = text_[position_];
    if (IsClosingEscape()) {
      AppendClosingEscape();
      return false;
    }
    if (c == '\r' || c == '\n') return false;
    if (c == ' ') {
      AppendCharacter('_');
    } else if (kIsLiteral.at(static_cast<std::uint8_t>(c))) {
      AppendCharacter(c);
    } else {
      if (written_ > longest_for_hexadecimal_) return false;
      AppendHexadecimal(destination_, c);
      written_ += 3;
    }
    ++position_;
    return true;
  }

  void AppendCharacter(char c) {
    destination_ += c;
    ++written_;
  }

  // The last escape of the text is its closing sequence of three bytes, if there are three.
  [[nodiscard]] bool IsClosingEscape() const {
    return position_ == last_escape_ && text_.size() - position_ >= kEscapeSequenceLength;
  }

  void AppendClosingEscape() {
    AppendHexadecimal(destination_, text_[position_]);
    AppendHexadecimal(destination_, text_[position_ + 1]);
    destination_ += 'B';
    position_ += kEscapeSequenceLength;
  }

  static constexpr std::size_t kEscapeSequenceLength = 3;

  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t end_of_encoding_;
  std::size_t last_escape_;
  std::string& destination_;
  int written_ = 0;
  int longest_;
  int longest_for_hexadecimal_;
};

}  // namespace

bool HasHighBytes(std::string_view text) {
  return std::ranges::any_of(text, IsHighByte);
}

std::size_t QEncode(std::string_view text, std::string& destination, int room) {
  return QEncoder(text, destination, room).Encode();
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
  if (code_page == kJapaneseCodePage) {
    japanese = ToLabelledJapanese(rest, room);
    rest = japanese;
  }
  encoded += charset->encoded_word_prefix;
  rest.remove_prefix(QEncode(rest, encoded, room));
  encoded += kEncodedWordEnd;
  return encoded.append(BehindLast(rest, IsHighByte));
}

}  // namespace brantel
