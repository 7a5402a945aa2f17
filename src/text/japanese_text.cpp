#include "text/japanese_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "text/japanese_code.h"

namespace brantel {
namespace {

constexpr char kEscape = '\x1B';
constexpr std::string_view kOpenKanji = "\x1B$B";
constexpr std::string_view kCloseKanji = "\x1B(B";

constexpr std::uint8_t Byte(char c) {
  return static_cast<std::uint8_t>(c);
}

constexpr char Char(unsigned byte) {
  return static_cast<char>(static_cast<std::uint8_t>(byte));
}

constexpr bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

constexpr bool IsEucJpByte(char c) {
  return Byte(c) >= 0xA1 && Byte(c) <= 0xFE;
}

constexpr bool IsHalfWidthKatakana(char c) {
  return Byte(c) >= 0xA1 && Byte(c) <= 0xDF;
}

struct Pair {
  unsigned first;
  unsigned second;
};

// Two rows of 94 cells share one lead byte of Shift_JIS, whose trail bytes leave out 0x7F.
constexpr Pair JisToShiftJisPair(Pair jis) {
  const unsigned lead = (jis.first + 1) / 2 + (jis.first < 0x5F ? 112 : 176);
  if (jis.first % 2 == 0) return {lead, jis.second + 126};
  return {lead, jis.second + (jis.second <= 0x5F ? 31 : 32)};
}

constexpr Pair ShiftJisToJisPair(Pair shift_jis) {
  const unsigned row = 2 * (shift_jis.first - (shift_jis.first <= 0x9F ? 112 : 176)) - 1;
  const unsigned cell = shift_jis.second - (shift_jis.second > 0x7F ? 1 : 0);
  return cell >= 0x9E ? Pair{row + 1, cell - 125} : Pair{row, cell - 31};
}

void Append(std::string& text, Pair pair) {
  text.push_back(Char(pair.first));
  text.push_back(Char(pair.second));
}

// Eight bytes at a time: the same steps, done in all bytes of a word at once.
static_assert(std::endian::native == std::endian::little);

constexpr std::uint64_t InEachByte(std::uint64_t byte) {
  return byte * 0x0101010101010101U;
}

constexpr std::uint64_t InEachPair(std::uint64_t pair) {
  return pair * 0x0001000100010001U;
}

// How many bytes at the front of a word have a clear top bit.
constexpr int CountClear(std::uint64_t top_bits) {
  return std::countr_zero(top_bits & InEachByte(0x80)) / 8;
}

// How many bytes at the front of a word are of 0xA1 to 0xFE.
constexpr int CountEucJpBytes(std::uint64_t word) {
  const std::uint64_t low_bits = word & InEachByte(0x7F);
  const std::uint64_t not_below = low_bits + InEachByte(0x80 - 0x21);
  const std::uint64_t above = low_bits + InEachByte(0x80 - 0x7F);
  return CountClear(~(word & not_below & ~above));
}

// 1 in each pair whose number, below 0x80, is not below `bound`.
constexpr std::uint64_t NotBelow(std::uint64_t numbers, std::uint64_t bound) {
  return ((numbers + InEachPair(0x80 - bound)) >> 7U) & InEachPair(1);
}

// The arithmetic of JisToShiftJisPair.
constexpr std::uint64_t FourEucJpPairsToShiftJis(std::uint64_t word) {
  const std::uint64_t first = word & InEachPair(0x7F);
  const std::uint64_t second = (word >> 8U) & InEachPair(0x7F);
  const std::uint64_t half = ((first + InEachPair(1)) >> 1U) & InEachPair(0x7F);
  const std::uint64_t lead = half + InEachPair(112) + (NotBelow(first, 0x5F) << 6U);
  const std::uint64_t odd = first & InEachPair(1);
  const std::uint64_t trail =
      second + InEachPair(126) - odd * (126 - 31) + (odd & NotBelow(second, 0x60));
  return lead | (trail << 8U);
}

// Writes the conversion of a text to where it has the text's length of room.
class EucJpConverter {
 public:
  EucJpConverter(std::string_view text, char* out)
      : in_(text.data()), end_(text.data() + text.size()), out_(out) {}

  // Where the result ends.
  char* Convert() {
    while (in_ != end_) {
      if (!ConvertWord()) ConvertCharacter();
    }
    return out_;
  }

 private:
  // Converts what the next eight bytes begin with, if that is pairs or ASCII.
  bool ConvertWord() {
    std::uint64_t word = 0;
    if (end_ - in_ < static_cast<std::ptrdiff_t>(sizeof word)) return false;
    std::memcpy(&word, in_, sizeof word);
    int length = CountEucJpBytes(word) & ~1;
    if (length != 0) {
      word = FourEucJpPairsToShiftJis(word);
    } else {
      length = CountClear(word);
      if (length == 0) return false;
    }
    // All of it is written, and what lies behind `length` is written over by what follows.
    std::memcpy(out_, &word, sizeof word);
    in_ += length;
    out_ += length;
    return true;
  }

  void ConvertCharacter() {
    constexpr char kSingleShift = '\x8E';
    const char first = *in_++;
    if (first == kSingleShift && in_ != end_) {
      if (!IsHalfWidthKatakana(*in_)) *out_++ = first;
      *out_++ = *in_++;
    } else if (IsEucJpByte(first) && in_ != end_ && IsEucJpByte(*in_)) {
      const Pair pair = JisToShiftJisPair({Byte(first) - 0x80U, Byte(*in_++) - 0x80U});
      *out_++ = Char(pair.first);
      *out_++ = Char(pair.second);
    } else {
      *out_++ = first;
    }
  }

  const char* in_;
  const char* end_;
  char* out_;
};

// JIS X 0208 text in the making: kanji stand between escape sequences.
class JisWriter {
 public:
  void Kanji(Pair jis) {
    if (!in_kanji_) text_ += kOpenKanji;
    in_kanji_ = true;
    Append(text_, jis);
  }

  // Two bytes as they are, in whatever mode the text is.
  void Raw(char first, char second) {
    text_.push_back(first);
    text_.push_back(second);
  }

  void Single(char c) {
    LeaveKanji();
    text_.push_back(c);
  }

  [[nodiscard]] std::size_t size() const { return text_.size(); }

  std::string Finish() {
    LeaveKanji();
    return std::move(text_);
  }

 private:
  void LeaveKanji() {
    if (in_kanji_) text_ += kCloseKanji;
    in_kanji_ = false;
  }

  std::string text_;
  bool in_kanji_ = false;
};

// The full-width forms of the half-width katakana 0xA1 to 0xDF, in Shift_JIS.
constexpr std::array<std::uint16_t, 63> kFullWidth = {
    0x8142, 0x8175, 0x8176, 0x8141, 0x8145, 0x8392, 0x8340, 0x8342, 0x8344, 0x8346, 0x8348,
    0x8383, 0x8385, 0x8387, 0x8362, 0x815B, 0x8341, 0x8343, 0x8345, 0x8347, 0x8349, 0x834A,
    0x834C, 0x834E, 0x8350, 0x8352, 0x8354, 0x8356, 0x8358, 0x835A, 0x835C, 0x835E, 0x8360,
    0x8363, 0x8365, 0x8367, 0x8369, 0x836A, 0x836B, 0x836C, 0x836D, 0x836E, 0x8371, 0x8374,
    0x8377, 0x837A, 0x837D, 0x837E, 0x8380, 0x8381, 0x8382, 0x8384, 0x8386, 0x8388, 0x8389,
    0x838A, 0x838B, 0x838C, 0x838D, 0x838F, 0x8393, 0x814A, 0x814B};

constexpr char kVoicedMark = '\xDE';
constexpr char kSemiVoicedMark = '\xDF';

constexpr bool IsHaRow(std::uint8_t katakana) {
  return katakana >= 0xCA && katakana <= 0xCE;
}

// How far the form with the sound mark lies behind the one without; 0 when there is none.
constexpr unsigned DistanceWithMark(std::uint8_t katakana, char mark) {
  constexpr std::uint8_t kU = 0xB3;
  if (mark == kSemiVoicedMark) return IsHaRow(katakana) ? 2 : 0;
  if (mark != kVoicedMark) return 0;
  if (katakana == kU) return 0x8394 - 0x8345;
  return IsHaRow(katakana) || (katakana >= 0xB6 && katakana <= 0xC4) ? 1 : 0;
}

// Reads Shift_JIS and writes JIS, a character at a time.
class ShiftJisConverter {
 public:
  explicit ShiftJisConverter(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }
  [[nodiscard]] std::size_t Written() const { return writer_.size(); }
  std::string Finish() { return writer_.Finish(); }

  void ConvertCharacter() {
    const char first = Take();
    if (IsJisLeadByte(first) && !rest_.empty()) {
      ConvertPair(first, Take());
    } else if (IsHalfWidthKatakana(first)) {
      ConvertKatakana(Byte(first));
    } else {
      writer_.Single(first);
    }
  }

 private:
  // The lead bytes from 0xF0 on are of characters that JIS X 0208 does not have.
  static bool IsJisLeadByte(char c) { return IsShiftJisLeadByte(c) && Byte(c) <= 0xEF; }

  char Take() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  void ConvertPair(char lead, char trail) {
    if (Byte(trail) >= 0x40 && Byte(trail) <= 0xFC) {
      writer_.Kanji(ShiftJisToJisPair({Byte(lead), Byte(trail)}));
    } else {
      writer_.Raw(lead, trail);
    }
  }

  void ConvertKatakana(std::uint8_t katakana) {
    unsigned full_width = kFullWidth.at(katakana - 0xA1U);
    const unsigned distance = rest_.empty() ? 0 : DistanceWithMark(katakana, rest_.front());
    if (distance != 0) Take();
    full_width += distance;
    writer_.Kanji(ShiftJisToJisPair({full_width >> 8U, full_width & 0xFFU}));
  }

  std::string_view rest_;
  JisWriter writer_;
};

bool BeginsCharacterOfTwoBytes(std::string_view text, std::size_t position) {
  std::size_t at = 0;
  while (at < position) {
    at += IsShiftJisLeadByte(text[at]) ? 2U : 1U;
  }
  return at == position && IsShiftJisLeadByte(text[at]);
}

// Takes an escape sequence apart from the escape itself. True when it opens kanji.
bool TakeEscapeSequence(std::string_view& rest) {
  if (rest.empty()) return false;
  const char kind = rest.front();
  const bool has_final_byte = kind == '$' || kind == '(';
  rest.remove_prefix(std::min<std::size_t>(rest.size(), has_final_byte ? 2 : 1));
  return kind == '$' || kind == 'K';
}

}  // namespace

std::string EucJpToShiftJis(std::string_view text) {
  std::string converted(text.size(), '\0');
  const char* const end = EucJpConverter(text, converted.data()).Convert();
  converted.resize(static_cast<std::size_t>(end - converted.data()));
  return converted;
}

std::string JisToShiftJis(std::string_view text) {
  std::string converted;
  bool in_kanji = false;
  while (!text.empty()) {
    const char first = text.front();
    text.remove_prefix(1);
    if (first == kEscape) {
      in_kanji = TakeEscapeSequence(text);
      continue;
    }
    in_kanji = in_kanji && !IsLineEnd(first);
    if (!in_kanji || text.empty()) {
      converted.push_back(first);
      continue;
    }
    Append(converted, JisToShiftJisPair({Byte(first), Byte(text.front())}));
    text.remove_prefix(1);
  }
  return converted;
}

std::string ToShiftJis(std::string_view text) {
  switch (DetectJapaneseCode(text)) {
    case JapaneseCode::kShiftJis:
      return std::string(text);
    case JapaneseCode::kEucJp:
    case JapaneseCode::kEucJpOrShiftJis:
      return EucJpToShiftJis(text);
    default:
      return JisToShiftJis(text);
  }
}

std::string_view CutShiftJis(std::string_view text, const ShiftJisCut& cut) {
  if (text.size() <= cut.longest) return text;
  return text.substr(0, BeginsCharacterOfTwoBytes(text, cut.checked) ? cut.checked : cut.length);
}

std::string EucJpToJis(std::string_view text, std::size_t capacity) {
  constexpr std::uint8_t kLeast = 0x81;
  JisWriter writer;
  while (!text.empty() && writer.size() < capacity) {
    if (text.size() >= 2 && Byte(text[0]) >= kLeast && Byte(text[1]) >= kLeast) {
      writer.Kanji({Byte(text[0]) - 0x80U, Byte(text[1]) - 0x80U});
      text.remove_prefix(2);
    } else {
      writer.Single(text.front());
      text.remove_prefix(1);
    }
  }
  return writer.Finish();
}

std::string ShiftJisToJis(std::string_view text, std::size_t room) {
  constexpr std::size_t kLeastRoom = 4;
  ShiftJisConverter converter(text);
  while (!converter.AtEnd() && converter.Written() + kLeastRoom <= room) {
    converter.ConvertCharacter();
  }
  return converter.Finish();
}

}  // namespace brantel
