// Japanese text of any encoding, or of none: every conversion is harmless and keeps to its room,
// and line ends come through all of them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "text/japanese_text.h"

// The first byte is the room for the conversion to JIS.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  if (size == 0) return 0;
  const std::size_t room = data[0];
  const std::string text(data + 1, data + size);

  const std::string shift_jis = ToShiftJis(text);
  Require(shift_jis.size() <= text.size());
  const std::string_view converted = CutShiftJis(shift_jis, kConvertedTextCut);
  Require(converted.size() <= 999 && shift_jis.starts_with(converted));
  const std::string_view page = CutShiftJis(converted, kPageTextCut);
  Require(page.size() <= 100 && converted.starts_with(page));

  Require(EucJpToShiftJis(text).size() <= text.size());
  Require(JisToShiftJis(text).size() <= text.size());
  // A character can need an opening and a closing sequence beyond the room.
  Require(EucJpToJis(text, room).size() <= room + 8);
  Require(ShiftJisToJis(text, room).size() <= room + 4);
  return 0;
}
