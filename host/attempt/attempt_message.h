#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "host/outcome/command_failure.h"

namespace brantel::host {

// What a process that delivers an alert tells the one that has started it, while it goes on.

// A text of the notifier's log (UTF-8), as it came.
struct LoggedText {
  std::string text;

  friend bool operator==(const LoggedText&, const LoggedText&) = default;
};

// What Send has answered. Nothing comes after it.
struct SendResult {
  std::int32_t result = 0;

  friend bool operator==(const SendResult&, const SendResult&) = default;
};

// Why Send could not be called. Nothing comes after it.
struct AttemptFault {
  ExitCode exit_code = ExitCode::kFailed;
  std::string message;

  friend bool operator==(const AttemptFault&, const AttemptFault&) = default;
};

using AttemptMessage = std::variant<LoggedText, SendResult, AttemptFault>;

// The message as one line, with its end.
std::string MessageLine(const AttemptMessage& message);

// Reads such a line. Nothing when it is none.
std::optional<AttemptMessage> ParseMessage(std::string_view line);

}  // namespace brantel::host
