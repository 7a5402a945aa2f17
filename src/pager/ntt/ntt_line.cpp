#include "pager/ntt/ntt_line.h"

#include <algorithm>

#include "pager/centre/pager_id.h"
#include "text/format_text.h"
#include "text/japanese_text.h"

namespace brantel {
namespace {

constexpr std::string_view kPrefix = "8000C00000********,10000,";
constexpr std::size_t kIdLength = 15;
constexpr std::size_t kPasswordLength = 4;

std::string IdField(std::string_view pager_id) {
  std::string field = DigitsOf(pager_id);
  field.resize(kIdLength, 'A');
  return field;
}

std::string PasswordField(std::string_view password) {
  const std::string_view start = password.substr(0, kPasswordLength);
  std::string field(kPasswordLength - start.size(), start.empty() ? 'A' : '0');
  field += start;
  return field;
}

constexpr bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

}  // namespace

std::string NttMessage(std::string_view message) {
  const std::string shift_jis = ToShiftJis(message);
  std::string cut(CutShiftJis(CutShiftJis(shift_jis, kConvertedTextCut), kPageTextCut));
  std::ranges::replace_if(cut, IsLineEnd, ' ');
  return cut;
}

std::string BuildNttLine(std::string_view pager_id, std::string_view password,
                         std::string_view message) {
  std::string line(kPrefix);
  line += IdField(pager_id) + ",";
  line += PasswordField(password) + ",";
  line += FormatText("%03d%s\r", {static_cast<std::uint32_t>(message.size()), message});
  return line;
}

}  // namespace brantel
