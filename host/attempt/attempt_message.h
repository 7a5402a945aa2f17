#pragma once

#include <cstddef>
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

// Puts lines together from what comes in pieces.
class LineAssembler {
 public:
  void Take(std::string_view piece) { bytes_.append(piece); }

  // The next whole line, without its end, if there is one.
  std::optional<std::string> NextLine();

 private:
  std::string bytes_;
  std::size_t searched_ = 0;  // bytes in which there is no line end
};

}  // namespace brantel::host
