#include "host/console/host_rules.h"

#include <algorithm>

#include "host/text/letter_case.h"

namespace brantel::host {
namespace {

constexpr unsigned kStandardPort = 80;

bool IsAnyAddress(std::string_view address) {
  return address == "0.0.0.0" || address == "::";
}

}  // namespace

bool HostRules::IsHost(std::string_view host) const {
  return std::ranges::any_of(
      names_, [&](const std::string& name) { return EqualIgnoringCase(name, host); });
}

// With encryption only where a proxy has put that before the console.
bool HostRules::IsOwnOrigin(std::string_view origin) const {
  const auto is_own = [&](std::string_view scheme) {
    return origin.starts_with(scheme) && IsHost(origin.substr(scheme.size()));
  };
  return is_own("http://") || is_own("https://");
}

std::vector<std::string> HostNames(const std::string& address, unsigned port) {
  std::vector<std::string> names;
  const auto add = [&](const std::string& name) {
    names.push_back(name + ":" + std::to_string(port));
    // Browsers leave it out then.
    if (port == kStandardPort) names.push_back(name);
  };
  const bool is_ipv6 = address.find(':') != std::string::npos;
  if (!IsAnyAddress(address)) add(is_ipv6 ? "[" + address + "]" : address);
  if (IsAnyAddress(address) || IsLoopback(address)) {
    add("localhost");
    if (address != "127.0.0.1") add("127.0.0.1");
    if (address != "::1") add("[::1]");
  }
  return names;
}

bool IsLoopback(std::string_view address) {
  return address.starts_with("127.") || address == "::1";
}

}  // namespace brantel::host
