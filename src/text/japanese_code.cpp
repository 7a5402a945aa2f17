#include "text/japanese_code.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace brantel {
namespace {

constexpr std::uint8_t kEscapeByte = 0x1B;

constexpr bool IsBetween(std::uint8_t byte, std::uint8_t first, std::uint8_t last) {
  return byte >= first && byte <= last;
}

// Leads a pair in Shift_JIS and is no part of one in EUC-JP.
constexpr bool OnlyInShiftJis(std::uint8_t byte) {
  return IsBetween(byte, 0x81, 0x8D) || IsBetween(byte, 0x8F, 0x9F);
}

constexpr std::uint8_t kSingleShiftByte = 0x8E;  // of EUC-JP; a lead byte in Shift_JIS

class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  JapaneseCode Scan() {
    while (!rest_.empty()) {
      if (const auto firm = ScanCharacter(Take())) return *firm;
    }
    return so_far_;
  }

 private:
  using Answer = std::optional<JapaneseCode>;

  // The next byte, and 0 behind the last one.
  std::uint8_t Take() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  Answer Undecided() {
    so_far_ = JapaneseCode::kEucJpOrShiftJis;
    return std::nullopt;
  }

  Answer ScanCharacter(std::uint8_t byte) {
    if (byte == kEscapeByte) return ScanEscape();
    if (OnlyInShiftJis(byte)) return JapaneseCode::kShiftJis;
    if (byte == kSingleShiftByte) return ScanBehindSingleShift(Take());
    if (IsBetween(byte, 0xA1, 0xDF)) return ScanBehindKatakana(Take());
    if (IsBetween(byte, 0xE0, 0xEF)) return ScanBehindHighLead(Take());
    if (IsBetween(byte, 0xF0, 0xFE)) return JapaneseCode::kEucJp;
    return std::nullopt;
  }

  Answer ScanEscape() {
    const std::uint8_t kind = Take();
    if (kind == 'K') return JapaneseCode::kJisEscK;
    if (kind != '$') return std::nullopt;
    return Take() == 'B' ? JapaneseCode::kJisNew : JapaneseCode::kJisOld;
  }

  Answer ScanBehindSingleShift(std::uint8_t byte) {
    if (IsBetween(byte, 0xA1, 0xDF)) return Undecided();
    if (IsBetween(byte, 0x40, 0x7E) || IsBetween(byte, 0x80, 0xA0) || IsBetween(byte, 0xE0, 0xFC)) {
      return JapaneseCode::kShiftJis;
    }
    return std::nullopt;
  }

  // Behind a byte that is a half-width katakana in Shift_JIS and leads a pair in EUC-JP.
  Answer ScanBehindKatakana(std::uint8_t byte) {
    if (byte <= 0x9F) return JapaneseCode::kShiftJis;
    if (IsBetween(byte, 0xA1, 0xDF)) return Undecided();
    if (IsBetween(byte, 0xE0, 0xEF)) return ScanRun(byte);
    if (IsBetween(byte, 0xF0, 0xFE)) return JapaneseCode::kEucJp;
    return std::nullopt;
  }

  // Behind a byte that leads a pair in both.
  Answer ScanBehindHighLead(std::uint8_t byte) {
    if (IsBetween(byte, 0x40, 0x7E) || IsBetween(byte, 0x80, 0xA0)) return JapaneseCode::kShiftJis;
    if (IsBetween(byte, 0xA1, 0xFC)) return Undecided();
    if (IsBetween(byte, 0xFD, 0xFE)) return JapaneseCode::kEucJp;
    return std::nullopt;
  }

  // From here on pairs cannot be told apart by their place, since the two encodings disagree on
  // where they begin. Any byte that only one of them has decides.
  Answer ScanRun(std::uint8_t byte) {
    for (; byte >= 0x40; byte = Take()) {
      if (OnlyInShiftJis(byte)) return JapaneseCode::kShiftJis;
      if (IsBetween(byte, 0xFD, 0xFE)) return JapaneseCode::kEucJp;
    }
    return Undecided();
  }

  std::string_view rest_;
  JapaneseCode so_far_ = JapaneseCode::kNone;
};

}  // namespace

JapaneseCode DetectJapaneseCode(std::string_view text) {
  return Scanner(text).Scan();
}

}  // namespace brantel
