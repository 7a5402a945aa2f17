#pragma once

#include <string_view>

namespace brantel {

// What a text seems to be encoded in. All these encodings hold the characters of JIS X 0208 as
// pairs of bytes. The numbers are those by which this detection has always told them.
enum class JapaneseCode {
  kJisNew = 1,   // ISO-2022-JP: the sequence ESC $ B opens kanji
  kJisOld = 2,   // its predecessors: another sequence ESC $ does
  kJisEscK = 3,  // a maker's own form: ESC K does
  kEucJp = 4,
  kShiftJis = 5,
  kEucJpOrShiftJis = 6,  // nothing but bytes that both can hold
  kNone = 7,             // none of all that, as in plain ASCII
};

// Scans a text until only one encoding explains it; the end of the text leaves the answer so far. A
// text that ends with the first byte of a pair of EUC-JP is no such text: there the byte is a
// half-width katakana of Shift_JIS.
JapaneseCode DetectJapaneseCode(std::string_view text);

}  // namespace brantel
