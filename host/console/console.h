#pragma once

#include "host/console/console_backend.h"
#include "host/console/console_context.h"
#include "host/console/console_routes.h"
#include "host/console/console_sessions.h"
#include "host/console/host_rules.h"
#include "host/console/http_message.h"

namespace brantel::host {

// The console: who is answered, by the routes. Whatever comes in may be hostile, and so may names,
// values and logs that are shown.
class Console {
 public:
  // What is handed over must outlive the object. `watched` is null where nothing is watched.
  Console(ConsoleBackend& backend, ConsoleSystem& system, ConsoleOptions options,
          ConsoleSessions::PasswordCheck check, WatchedItems* watched);

  HttpResponse Handle(const HttpRequest& request);

 private:
  HttpResponse Dispatch(const HttpRequest& request);
  HttpResponse Get(const ConsoleRoute& route, ConsoleVisit& visit);
  HttpResponse Post(const ConsoleRoute& route, ConsoleVisit& visit);
  [[nodiscard]] bool MayPost(const ConsoleRoute& route, const ConsoleVisit& visit) const;
  const ConsoleSession* SessionOf(const ConsoleRoute& route, const ConsoleVisit& visit);

  ConsoleContext context_;
  const HostRules rules_;
};

}  // namespace brantel::host
