// Reads EUC-JP from standard input to its end and writes it as Shift_JIS, for comparison with other
// programs that do.
#include <unistd.h>

#include <array>
#include <string>

#include "text/japanese_text.h"

int main() {
  std::string text;
  std::array<char, 1U << 16U> piece;  // NOLINT(*-member-init): filled by read
  for (ssize_t count = 0; (count = read(STDIN_FILENO, piece.data(), piece.size())) > 0;)
    text.append(piece.data(), static_cast<std::size_t>(count));
  const std::string converted = brantel::EucJpToShiftJis(text);
  const ssize_t written = write(STDOUT_FILENO, converted.data(), converted.size());
  return written == static_cast<ssize_t>(converted.size()) ? 0 : 1;
}
