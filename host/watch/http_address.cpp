#include "host/watch/http_address.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace brantel::host {
namespace {

constexpr std::string_view kScheme = "http://";
constexpr std::uint16_t kHttpPort = 80;

bool IsPrintable(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c > ' ' && c < '\x7F'; });
}

std::optional<std::uint16_t> ParsePort(std::string_view text) {
  std::uint16_t port = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped_at, error] = std::from_chars(text.data(), end, port);
  if (error != std::errc() || stopped_at != end || port == 0) return std::nullopt;
  return port;
}

// Takes the host from the text before its port.
std::string_view CutHost(std::string_view& text) {
  const bool has_brackets = text.starts_with('[') && text.find(']') != std::string_view::npos;
  const std::size_t end = has_brackets ? text.find(']') : std::min(text.find(':'), text.size());
  const std::string_view host = has_brackets ? text.substr(1, end - 1) : text.substr(0, end);
  text.remove_prefix(has_brackets ? end + 1 : end);
  return host;
}

}  // namespace

std::optional<HttpAddress> ParseHttpAddress(std::string_view url) {
  if (!url.starts_with(kScheme) || !IsPrintable(url)) return std::nullopt;
  url.remove_prefix(kScheme.size());
  std::string_view authority = url.substr(0, url.find_first_of("/?#"));
  std::string_view target = url.substr(authority.size());
  target = target.substr(0, target.find('#'));

  HttpAddress address{.host = std::string(CutHost(authority)), .port = kHttpPort};
  if (!authority.empty()) {
    const auto port = authority.starts_with(':') ? ParsePort(authority.substr(1)) : std::nullopt;
    if (!port) return std::nullopt;
    address.port = *port;
  }
  // A name before the host would be a password to be sent.
  if (address.host.empty() || address.host.find('@') != std::string::npos) return std::nullopt;
  address.target = (target.starts_with('/') ? "" : "/") + std::string(target);
  return address;
}

}  // namespace brantel::host
