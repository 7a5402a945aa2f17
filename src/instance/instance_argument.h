#pragma once

#include <string>

namespace brantel {

// What the host names an instance by, the path of its file in Send, its name for the dialogs: the
// text as it came, for the log, and the path in the system's ANSI code page, up to the first NUL,
// for the file system.
struct InstanceArgument {
  std::u16string text;
  std::string path;
};

}  // namespace brantel
