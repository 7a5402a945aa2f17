#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "instance/instance_codec.h"
#include "instance/instance_files.h"
#include "notifier/alert_log.h"
#include "notifier/notifier_host.h"
#include "system/result.h"

namespace brantel {

// What the host names an instance by, the path of its file in Send, its name for the dialogs: the
// text as it came, for the log, and the path in the system's ANSI code page, up to the first NUL,
// for the file system.
struct InstanceArgument {
  std::u16string text;
  std::string path;
};

// Asks the host that wants to bind itself to an object for its callbacks. Null when it has none.
using HostQuery = std::function<std::shared_ptr<NotifierHost>()>;

// What a notifier class does behind its COM object. One of these belongs to each object and is
// called from one thread at a time.
class Notifier {
 public:
  virtual ~Notifier() = default;

  // Binds a host: asks for its callbacks, and before or after that gets what else the class needs
  // as long as a host is bound. The host that is then bound, or null when one of that failed. Not
  // called while a host is bound.
  virtual std::shared_ptr<NotifierHost> Initialize(const HostQuery& query_host) {
    return query_host();
  }

  // Ends what Initialize began, when the host has been let go.
  virtual void Shutdown() noexcept {}

  // Delivers one alert for the named instance and returns when that has ended, well or badly: S_OK
  // or another success code of the class, E_FAIL, or the failing result of a host call. `host` is
  // null when none is bound.
  virtual Result Send(const InstanceArgument& argument, NotifierHost* host) = 0;
};

// Tells in three log lines that an instance cannot be loaded: which, why, and a line end.
void LogFailedLoad(const AlertLog& log, const InstanceLayout& layout, std::u16string_view which);

// The same of the class's instance that prefills new ones, by a name of its own.
void LogFailedDefaultLoad(const AlertLog& log, const InstanceLayout& layout);

// Loads the instance that an alert, or a request for its edit page, names. When that fails, also
// for want of memory, tells the host so, with the argument as it came.
std::optional<Instance> LoadInstanceForAlert(InstanceFiles& files, const InstanceLayout& layout,
                                             const InstanceArgument& argument, NotifierHost* host);

}  // namespace brantel
