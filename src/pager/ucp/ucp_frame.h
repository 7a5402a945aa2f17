#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Frames of the Universal Computer Protocol (UCP, also called EMI): STX, header, body and checksum
// between slashes, ETX. A page is one operation 02, the call input with several addresses.

namespace brantel {

// The operation's data: one address, neither originator nor authentication, and the message in the
// hexadecimal digits of its first 80 bytes. A list of IDs separated by commas makes several address
// fields, deliberately still counted as one address. Nothing without a pager ID or a message.
std::optional<std::string> BuildUcpBody(std::string_view pager_id, std::string_view message);

// The frame with this body. The transaction reference is below 100.
std::string BuildUcpFrame(std::uint32_t transaction_reference, std::string_view body);

}  // namespace brantel
