#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace brantel::sim {

// The frames of UCP, the Universal Computer Protocol (EMI-UCP version 3.5), of which centres here
// know one operation: 02, a message to several addresses.
namespace ucp {
inline constexpr char kStx = '\x02';
inline constexpr char kEtx = '\x03';
}  // namespace ucp

// What an operation asks for.
struct UcpOperation {
  std::string reference;   // the two digits by which the caller knows the answer
  std::string recipients;  // with "/" between
  std::string text;
};

// What is wrong with an operation, and the error by which a centre refuses it.
struct UcpFault {
  std::string reference;
  std::string error;  // two digits
  std::string what;
};

// Reads what stands between STX and ETX.
std::variant<UcpOperation, UcpFault> ReadUcpOperation(std::string_view frame);

// The frames that answer an operation, with STX and ETX.
std::string UcpAcceptance(const std::string& reference, const std::string& recipients);
std::string UcpRefusal(const std::string& reference, const std::string& error);

}  // namespace brantel::sim
