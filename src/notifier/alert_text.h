#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "notifier/alert_trigger.h"
#include "notifier/notifier_host.h"
#include "system/result.h"

namespace brantel {

// What a class that words its alerts by the kind of event gets from the host: either an event of a
// kind, with the host's text for it, or no event, with the instance's own template expanded.
struct AlertText {
  std::optional<AlertKind> kind;
  std::string text;
};

// The outcome of ComposeAlertText: an alert to deliver, or the result with which Send ends at once.
struct AlertComposition {
  std::optional<AlertText> alert;
  Result result = kOk;
};

// Expands `event_template` and asks the host what happened. An event without a kind that we handle
// is logged as such and ends Send with S_OK. With no event, `fallback_template` is expanded
// instead, and a failure of that ends Send with the host's result.
AlertComposition ComposeAlertText(NotifierHost& host, std::string_view event_template,
                                  std::string_view fallback_template);

}  // namespace brantel
