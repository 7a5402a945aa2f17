#pragma once

#include "brantel/notifier_contract.h"
#include "notifier/notifier_host.h"
#include "system/windows/com_pointer_win32.h"

namespace brantel {

// The host's callback object behind the portable interface. Holds a reference of its own.
class ComHost final : public NotifierHost {
 public:
  explicit ComHost(ComPointer<INotifierHost> host) : host_(std::move(host)) {}

  std::shared_ptr<NotifierHost> AddReference() override;
  Result ExpandMessage(std::string& text, EmptyText empty_text) override;
  void LogMessage(std::string_view text) override;
  void LogMessage(std::u16string_view text) override;
  Result GetAlertTrigger(std::uint32_t& word) override;

 private:
  void Log(std::wstring_view text);

  ComPointer<INotifierHost> host_;
};

}  // namespace brantel
