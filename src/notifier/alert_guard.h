#pragma once

#include "notifier/alert_log.h"
#include "notifier/notifier_host.h"
#include "system/result.h"
#include "text/string_table.h"

namespace brantel {

// Runs the delivery of an alert, out of which no exception may go. What is thrown (in practice,
// memory that ran out) ends the alert with E_FAIL, and the host's log, if there is a host, tells
// why: of an alert that did not go out somebody has to learn.
template <typename Body>
Result GuardAlert(NotifierHost* host, const Body& body) noexcept {
  try {
    return body();
  } catch (...) {
    AlertLog(host).Line(text_id::kNoMemoryForData);
    return kFail;
  }
}

}  // namespace brantel
