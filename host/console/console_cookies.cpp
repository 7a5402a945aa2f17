#include "host/console/console_cookies.h"

#include <algorithm>
#include <string>

namespace brantel::host {
namespace {

constexpr std::string_view kAttributes = "; Path=/; HttpOnly; SameSite=Strict";

}  // namespace

std::string_view CookieOf(const HttpRequest& request, std::string_view name) {
  std::string_view cookies = request.Field("Cookie").value_or("");
  while (!cookies.empty()) {
    std::string_view cookie = cookies.substr(0, cookies.find(';'));
    cookies.remove_prefix(std::min(cookies.size(), cookie.size() + 1));
    cookie.remove_prefix(std::min(cookie.size(), cookie.find_first_not_of(' ')));
    if (cookie.starts_with(name) && cookie.substr(name.size()).starts_with('='))
      return cookie.substr(name.size() + 1);
  }
  return {};
}

HttpField SetCookie(std::string_view name, std::string_view value) {
  return {"Set-Cookie", std::string(name).append("=").append(value).append(kAttributes)};
}

HttpField EndCookie(std::string_view name) {
  return {"Set-Cookie", std::string(name).append("=").append(kAttributes).append("; Max-Age=0")};
}

}  // namespace brantel::host
