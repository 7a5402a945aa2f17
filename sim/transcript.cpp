#include "sim/transcript.h"

#include <iomanip>

namespace brantel::sim {

void Transcript::Note(std::string_view who, std::string_view what) {
  const auto milliseconds = timeline_.now().count();
  stream_ << std::setw(5) << milliseconds / 1000 << '.' << std::setw(3) << std::setfill('0')
          << milliseconds % 1000 << std::setfill(' ') << "  " << std::left << std::setw(6) << who
          << std::right << ' ' << what << std::endl;
}

void Transcript::NoteBytes(std::string_view who, std::string_view bytes) {
  Note(who, Quoted(bytes));
}

std::string Quoted(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string quoted = "\"";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\r') {
      quoted += "\\r";
    } else if (c == '\n') {
      quoted += "\\n";
    } else if (c == '"' || c == '\\') {
      quoted += {'\\', c};
    } else if (byte < 0x20 || byte >= 0x7F) {
      quoted += {'\\', 'x', kDigits[byte / 16U], kDigits[byte % 16U]};
    } else {
      quoted += c;
    }
  }
  return quoted + '"';
}

}  // namespace brantel::sim
