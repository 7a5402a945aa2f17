#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/console/console_context.h"
#include "host/console/http_message.h"

namespace brantel::host {

// What the console answers to a request.
using ConsoleAnswer = HttpResponse (*)(ConsoleContext& console, const ConsoleVisit& visit);

// Who may ask for it.
enum class Access {
  kEverybody,
  kSession,  // who is logged in, where a password is asked for
  kFrame,    // who knows the frame token, which is the first word of the path
};

struct ConsoleRoute {
  std::string_view path;  // "*" stands for one word
  Access access;
  ConsoleAnswer get;   // null: there is nothing to see
  ConsoleAnswer post;  // null: there is nothing to change
};

// The route to a path, with what it has for each "*". Null where none leads there.
const ConsoleRoute* FindRoute(const std::vector<std::string>& segments,
                              std::vector<std::string>& words);

}  // namespace brantel::host
