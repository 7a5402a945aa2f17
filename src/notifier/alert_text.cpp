#include "notifier/alert_text.h"

#include <utility>

#include "notifier/alert_log.h"
#include "text/string_table.h"

namespace brantel {
namespace {

AlertComposition ComposeWithoutEvent(NotifierHost& host, std::string_view fallback_template) {
  std::string text(fallback_template);
  const Result result = host.ExpandMessage(text);
  if (Failed(result)) return {std::nullopt, result};
  return {AlertText{std::nullopt, std::move(text)}, kOk};
}

}  // namespace

AlertComposition ComposeAlertText(NotifierHost& host, std::string_view event_template,
                                  std::string_view fallback_template) {
  // The template is expanded before the trigger is asked for, and its result is not examined: a
  // host that cannot fill it in still has an event to be told of.
  std::string text(event_template);
  host.ExpandMessage(text);

  std::uint32_t trigger_word = 0;
  if (Failed(host.GetAlertTrigger(trigger_word))) {
    return ComposeWithoutEvent(host, fallback_template);
  }
  const std::optional<AlertKind> kind = ChooseAlertKind(trigger_word);
  if (!kind) {
    AlertLog(&host).Line(text_id::kUnhandledTrigger);
    return {std::nullopt, kOk};
  }
  return {AlertText{kind, std::move(text)}, kOk};
}

}  // namespace brantel
