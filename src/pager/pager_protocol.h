#pragma once

#include <string_view>

namespace brantel {

// The ways in which a page can be sent, by the numbers by which they have always been told.
enum class PagerProtocol {
  kUnknown = -1,
  kTap = 1,
  kSmsTap = 2,
  kNtt = 3,
  kUcpSms = 4,
};

// The protocol of this name, in exactly these letters.
PagerProtocol ProtocolNamed(std::string_view name);

}  // namespace brantel
