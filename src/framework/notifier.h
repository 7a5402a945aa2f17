#pragma once

#include <optional>
#include <string>

#include "framework/instance_codec.h"
#include "framework/instance_files.h"
#include "framework/notifier_host.h"
#include "framework/result.h"

namespace brantel {

// The instance file that the host names in Send: the text as it came, for the log, and the path in
// the system's ANSI code page, up to the first NUL, for the file system.
struct InstanceArgument {
  std::u16string text;
  std::string path;
};

// What a notifier class does behind its COM object. One of these belongs to each object and is
// called from one thread at a time.
class Notifier {
 public:
  virtual ~Notifier() = default;

  // Delivers one alert for the named instance and returns when that has ended, well or badly: S_OK
  // or another success code of the class, E_FAIL, or the failing result of a host call. `host` is
  // null when none is bound.
  virtual Result Send(const InstanceArgument& argument, NotifierHost* host) = 0;
};

// Loads the instance that an alert names. When that fails, tells the host (if there is one) in
// three log lines: the argument as it came, why, and a line end.
std::optional<Instance> LoadInstanceForAlert(InstanceFiles& files, const InstanceLayout& layout,
                                             const InstanceArgument& argument, NotifierHost* host);

}  // namespace brantel
