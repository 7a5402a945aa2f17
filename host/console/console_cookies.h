#pragma once

#include <string_view>

#include "host/console/http_message.h"

namespace brantel::host {

inline constexpr std::string_view kSessionCookie = "console";
// What this browser has deleted just now.
inline constexpr std::string_view kDeletedCookie = "deleted";

// The value of the cookie of that name; empty where there is none.
std::string_view CookieOf(const HttpRequest& request, std::string_view name);

HttpField SetCookie(std::string_view name, std::string_view value);
HttpField EndCookie(std::string_view name);

}  // namespace brantel::host
