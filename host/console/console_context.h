#pragma once

#include <string>
#include <vector>

#include "host/console/console_backend.h"
#include "host/console/console_sessions.h"
#include "host/console/form_text.h"
#include "host/console/http_message.h"
#include "host/console/undo_shelf.h"

namespace brantel::host {

struct ConsoleOptions {
  std::vector<std::string> host_names;  // as HostRules has them
  std::string directory;                // of the instances, as people know it
  bool shows_secrets = false;           // in the pages that the module itself makes
  std::string notice{};                 // words on the overview; empty for none
};

// What the console's answers are made from.
struct ConsoleContext {
  ConsoleBackend& backend;
  const ConsoleOptions options;
  ConsoleSessions sessions;
  UndoShelf shelf;
  WatchedItems* const watched;  // null where nothing is watched
};

// One request, as far as it has been understood.
struct ConsoleVisit {
  const HttpRequest& request;
  std::vector<std::string> words{};  // of the path, where the route has a "*"
  FormValues query{};
  FormValues form{};
  const ConsoleSession* session = nullptr;
};

}  // namespace brantel::host
