#pragma once

#include <cstdint>
#include <optional>

#include "host/attempt/attempt_message.h"
#include "host/course/alert_course.h"

namespace brantel::host {

// What became of one attempt to deliver an alert.
struct AttemptOutcome {
  AttemptEnd end = AttemptEnd::kProcessDied;
  std::optional<std::int32_t> result{};  // what Send has answered, if it has
  std::optional<AttemptFault> fault{};   // why it was not called, if it was not
};

}  // namespace brantel::host
