#pragma once

#include <functional>
#include <memory>

#include "instance/instance_argument.h"
#include "notifier/notifier_host.h"
#include "system/result.h"

namespace brantel {

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

}  // namespace brantel
