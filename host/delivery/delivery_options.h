#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"

namespace brantel::host {

// How an alert is to be delivered.
struct DeliveryOptions {
  AlertEvent event = kItemDown;
  MessageVariables variables{};
  bool takes_raw_values = false;
  std::optional<std::chrono::milliseconds> time_limit{};
  bool shows_secrets = false;
  std::string journal{};  // as given, so it may be relative; empty when none is
};

}  // namespace brantel::host
