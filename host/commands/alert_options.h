#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"

namespace CLI {
class App;
}

namespace brantel::host {

// How an alert is to be sent and told of.
struct AlertOptions {
  AlertEvent event = kItemDown;
  MessageVariables variables{};
  bool takes_raw_values = false;
  std::optional<std::chrono::milliseconds> time_limit{};
  bool has_times = false;
  bool shows_secrets = false;
  bool uses_event_log = false;
  std::string journal{};  // as given, so it may be relative; empty when none is
};

// The parser fills in `options`, which must outlive it.
void DeclareAlertOptions(CLI::App& parser, AlertOptions& options);

}  // namespace brantel::host
