#include "text/double_byte_text.h"

#include <cstddef>

namespace brantel {

std::string_view WithoutTornCharacter(std::string_view text, const CodePage& code_page) {
  if (text.empty() || !code_page.IsLeadByte(text.back())) return text;
  // The last byte may also be a second byte that looks like a lead byte: only the way from the
  // start tells.
  std::size_t next = 0;
  while (next < text.size()) {
    if (code_page.IsLeadByte(text[next])) ++next;
    ++next;
  }
  return next > text.size() ? text.substr(0, text.size() - 1) : text;
}

}  // namespace brantel
