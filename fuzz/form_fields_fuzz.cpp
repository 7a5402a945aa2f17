// Posted forms: whatever a form holds, a value never holds what ends it, and the value of one line
// is the beginning of the one that keeps line breaks.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "web/form_fields.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string form(data, data + size);
  const std::string_view name = "upcode";
  const std::string absent = "absent&\r\n+";
  const std::string line = brantel::FormField(form, name, brantel::ValueEnd::kLineBreak, absent);
  const std::string lines = brantel::FormField(form, name, brantel::ValueEnd::kNothing, absent);

  const std::string text = form.substr(0, form.find('\0'));
  if (text.find("upcode=") == std::string::npos) {
    if (line != absent || lines != absent) std::abort();
    return 0;
  }
  if (lines.find_first_of(std::string_view("&+\0", 3)) != std::string::npos) std::abort();
  if (line != lines.substr(0, lines.find_first_of("\r\n"))) std::abort();
  return 0;
}
