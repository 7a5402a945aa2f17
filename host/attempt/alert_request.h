#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"

namespace brantel::host {

// An alert that is to be delivered. Texts are UTF-8.
struct AlertRequest {
  std::optional<std::string> module_file{};  // to load without registration, if one is named
  std::string class_name{};
  std::string instance_file{};  // its full path, or empty
  AlertEvent event = kItemDown;
  MessageVariables variables{};
  bool takes_raw_values = false;  // whether they are put in without being made harmless
};

// The request as one line, with its end, for the process that delivers it.
std::string RequestLine(const AlertRequest& request);

// Reads such a line. Nothing when it is none.
std::optional<AlertRequest> ParseRequest(std::string_view line);

}  // namespace brantel::host
