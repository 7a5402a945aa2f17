#pragma once

#include <string_view>

namespace brantel::host {

// The files of host/console/pages, which are built in: nothing else is ever given out.

// A template; throws std::logic_error when there is none of that name.
std::string_view PageTemplate(std::string_view name);

// A style sheet, script or picture.
struct ConsoleFile {
  std::string_view name;
  std::string_view type;  // for Content-Type
  std::string_view content;
};

// Null when there is none of that name.
const ConsoleFile* FindConsoleFile(std::string_view name);

}  // namespace brantel::host
