#include "sim/ucp_frame.h"

#include <algorithm>
#include <charconv>
#include <iomanip>
#include <optional>
#include <sstream>
#include <vector>

#include "sim/byte_sum.h"
#include "sim/digits.h"

namespace brantel::sim {
namespace {

constexpr const char* kChecksumError = "01";
constexpr const char* kSyntaxError = "02";
constexpr const char* kUnknownOperation = "03";
constexpr const char* kInvalidAddress = "06";
constexpr const char* kUnknownMessageType = "17";
constexpr const char* kMessageTooLong = "18";

constexpr std::size_t kHeaderFields = 4;  // reference, length, operation or result, type
constexpr std::size_t kLongestAddress = 16;
constexpr std::size_t kLongestText = 320;  // bytes; two signs stand for each

bool AreDigits(std::string_view text, std::size_t count) {
  return text.size() == count && std::ranges::all_of(text, IsDigit);
}

std::optional<std::size_t> Number(std::string_view digits) {
  std::size_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::vector<std::string> Split(std::string_view text) {
  std::vector<std::string> fields;
  std::size_t end = 0;
  while ((end = text.find('/')) != std::string_view::npos) {
    fields.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  fields.emplace_back(text);
  return fields;
}

std::string Padded(std::size_t number, int width) {
  std::ostringstream text;
  text << std::setw(width) << std::setfill('0') << number;
  return text.str();
}

// Of all signs before it, the slash in front of it included.
std::string Checksum(std::string_view signs) {
  std::ostringstream text;
  text << std::hex << std::uppercase << std::setw(2) << std::setfill('0') << ByteSum(signs) % 256;
  return text.str();
}

std::optional<std::string> FromHex(std::string_view signs) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  if (signs.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  for (std::size_t i = 0; i < signs.size(); i += 2) {
    const std::size_t high = kDigits.find(signs[i]);
    const std::size_t low = kDigits.find(signs[i + 1]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
  }
  return bytes;
}

std::string Join(std::vector<std::string>::const_iterator first,
                 std::vector<std::string>::const_iterator last) {
  std::string joined;
  for (; first != last; ++first) {
    joined += (joined.empty() ? "" : "/") + *first;
  }
  return joined;
}

bool IsAddress(const std::string& text) {
  return !text.empty() && text.size() <= kLongestAddress && std::ranges::all_of(text, IsDigit);
}

// The data of an operation 02: how many addresses, the addresses, originator, authentication code,
// message type, message.
std::variant<UcpOperation, UcpFault> ReadData(const std::string& reference,
                                              const std::vector<std::string>& data) {
  const auto refuse = [&](const char* error, const char* what) {
    return UcpFault{reference, error, what};
  };
  constexpr std::size_t kOtherFields = 5;
  const std::size_t addresses = Number(data.front()).value_or(0);
  if (addresses == 0) return refuse(kSyntaxError, "no number of addresses");
  if (data.size() != addresses + kOtherFields) return refuse(kSyntaxError, "number of fields");

  const auto first_address = data.begin() + 1;
  const auto other = first_address + static_cast<std::ptrdiff_t>(addresses);
  if (!std::all_of(first_address, other, IsAddress)) return refuse(kInvalidAddress, "address");
  const std::string& message_type = other[2];
  if (message_type != "3") return refuse(kUnknownMessageType, "message type");
  const auto text = FromHex(other[3]);
  if (!text) return refuse(kSyntaxError, "message is not hexadecimal");
  if (text->size() > kLongestText) return refuse(kMessageTooLong, "message too long");
  return UcpOperation{reference, Join(first_address, other), *text};
}

// The answer to an operation 02.
std::string Answer(const std::string& reference, const std::string& data) {
  constexpr std::size_t kChecksumSize = 2;
  const std::size_t length =
      reference.size() + std::string_view("/00000/R/02/").size() + data.size() + 1 + kChecksumSize;
  const std::string signs = reference + "/" + Padded(length, 5) + "/R/02/" + data + "/";
  return ucp::kStx + signs + Checksum(signs) + ucp::kEtx;
}

}  // namespace

std::variant<UcpOperation, UcpFault> ReadUcpOperation(std::string_view frame) {
  std::vector<std::string> fields = Split(frame);
  const std::string reference = AreDigits(fields.front(), 2) ? fields.front() : "00";
  const auto refuse = [&](const char* error, const std::string& what) {
    return UcpFault{reference, error, what};
  };
  if (fields.size() < kHeaderFields + 2) return refuse(kSyntaxError, "number of fields");
  const std::string checksum = Checksum(frame.substr(0, frame.rfind('/') + 1));
  if (fields.back() != checksum) {
    return refuse(kChecksumError, "checksum " + fields.back() + " instead of " + checksum);
  }
  if (reference != fields[0]) return refuse(kSyntaxError, "transaction reference");
  if (!AreDigits(fields[1], 5) || Number(fields[1]) != frame.size()) {
    return refuse(kSyntaxError, "length " + fields[1] + " instead of " + Padded(frame.size(), 5));
  }
  if (fields[2] != "O" || fields[3] != "02") return refuse(kUnknownOperation, "operation");
  fields.pop_back();
  fields.erase(fields.begin(), fields.begin() + kHeaderFields);
  return ReadData(reference, fields);
}

std::string UcpAcceptance(const std::string& reference, const std::string& recipients) {
  return Answer(reference, "A/" + recipients);
}

std::string UcpRefusal(const std::string& reference, const std::string& error) {
  return Answer(reference, "N/" + error + "/");
}

}  // namespace brantel::sim
