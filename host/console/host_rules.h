#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// By which names the console may be asked for. A page of somebody else's can have a name that leads
// to this computer, and a browser then takes both for one place; it says by which name it came.
class HostRules {
 public:
  // The names with their ports, such as "127.0.0.1:8080" or "[::1]:8080", or without one where a
  // proxy stands before the console.
  explicit HostRules(std::vector<std::string> names) : names_(std::move(names)) {}

  // Whether the request's Host is one of them.
  [[nodiscard]] bool IsHost(std::string_view host) const;

  // Whether the request's Origin is a page of the console's.
  [[nodiscard]] bool IsOwnOrigin(std::string_view origin) const;

 private:
  std::vector<std::string> names_;
};

// The names of a server at this address and port: its own, and those of the computer itself where
// it can be reached by them.
std::vector<std::string> HostNames(const std::string& address, unsigned port);

// Whether nobody but this computer reaches the address.
bool IsLoopback(std::string_view address);

}  // namespace brantel::host
