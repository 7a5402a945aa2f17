#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brantel::host {

// Where an HTTP request goes.
struct HttpAddress {
  std::string host{};  // without the brackets of an IPv6 address
  std::uint16_t port = 0;
  std::string target{};  // path and query

  friend bool operator==(const HttpAddress&, const HttpAddress&) = default;
};

// Reads "http://HOST[:PORT][/PATH][?QUERY]". Nothing when it is of another form, or holds what may
// not stand in a request's line.
std::optional<HttpAddress> ParseHttpAddress(std::string_view url);

}  // namespace brantel::host
