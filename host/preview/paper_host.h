#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "host/alert/alert_event.h"
#include "host/alert/text_expander.h"
#include "host/preview/text_conversions.h"
#include "notifier/notifier_host.h"

namespace brantel::host {

// This host as a notifier sees it that runs without the module: it tells of the event and fills in
// the variables as the host of a real alert does, and keeps the log.
class PaperHost final : public NotifierHost {
 public:
  // `texts` must outlive the object.
  PaperHost(AlertEvent event, TextExpander expand, const TextConversions& texts)
      : event_(event), expand_(std::move(expand)), texts_(texts) {}

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
  const TextExpander expand_;
  const TextConversions& texts_;
  std::string last_expanded_;
  std::string log_;
};

}  // namespace brantel::host
