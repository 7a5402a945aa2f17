#include "pager/ucp/ucp_frame.h"

#include "pager/centre/pager_id.h"
#include "text/format_text.h"

namespace brantel {
namespace {

constexpr char kStartOfText = '\x02';
constexpr char kEndOfText = '\x03';

constexpr std::size_t kLongestMessage = 80;

// What the length of a frame counts beside its body: the header, the two slashes around the body
// and the checksum.
constexpr std::size_t kLengthAroundBody = 13 + 1 + 1 + 2;

std::string RecipientAddress(std::string_view pager_id) {
  std::string address;
  for (const char c : pager_id) {
    if (IsDigit(c)) address += c;
    if (c == ',') address += '/';
  }
  return address;
}

std::string ToHex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string hex(2 * bytes.size(), '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(bytes[i]);
    hex[2 * i] = kDigits[byte >> 4U];
    hex[2 * i + 1] = kDigits[byte & 0xFU];
  }
  return hex;
}

std::string Checksum(std::string_view text) {
  std::uint8_t sum = 0;
  for (const char c : text) {
    sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(c));
  }
  const char byte = static_cast<char>(sum);
  return ToHex({&byte, 1});
}

}  // namespace

std::optional<std::string> BuildUcpBody(std::string_view pager_id, std::string_view message) {
  if (pager_id.empty() || message.empty()) return std::nullopt;
  return "1/" + RecipientAddress(pager_id) + "///3/" + ToHex(message.substr(0, kLongestMessage));
}

std::string BuildUcpFrame(std::uint32_t transaction_reference, std::string_view body) {
  const auto length = static_cast<std::uint32_t>(body.size() + kLengthAroundBody);
  std::string checked = FormatText("%02d/%05d/O/02/", {transaction_reference, length});
  checked += body;
  checked += '/';
  return kStartOfText + checked + Checksum(checked) + kEndOfText;
}

}  // namespace brantel
