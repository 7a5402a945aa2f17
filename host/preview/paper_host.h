#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"
#include "host/preview/text_conversions.h"
#include "notifier/notifier_host.h"

namespace brantel::host {

// This host as a notifier sees it that runs without the module: it tells of the event and fills in
// the variables as the host of a real alert does, and keeps the log.
class PaperHost final : public NotifierHost {
 public:
  // Both must outlive the object.
  PaperHost(AlertEvent event, const MessageVariables& variables, const TextConversions& texts)
      : event_(event), variables_(variables), texts_(texts) {}

  Result ExpandMessage(std::string& text, EmptyText empty_text) override;
  void LogMessage(std::string_view text) override;
  void LogMessage(std::u16string_view text) override;
  // E_FAIL when there is no event.
  Result GetAlertTrigger(std::uint32_t& word) override;

  // What the last text to be filled in came to, in the code page, as far as its first NUL.
  [[nodiscard]] std::string_view last_expanded() const;

  // UTF-8.
  [[nodiscard]] const std::string& log() const { return log_; }

 private:
  AlertEvent event_;
  const MessageVariables& variables_;
  const TextConversions& texts_;
  std::string last_expanded_;
  std::string log_;
};

}  // namespace brantel::host
