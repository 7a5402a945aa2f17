#pragma once

#include "host/alert/alert_event.h"
#include "host/alert/log_secrets.h"
#include "host/alert/message_variables.h"
#include "host/text/log_text.h"
#include "host/text/text_sink.h"
#include "notifier/notifier_contract.h"

namespace brantel::host {

// The host that a notifier is bound to for one alert: returns the alert's event, fills in its
// variables, and prints its log as it comes.
class HostCallback final : public INotifierHost {
 public:
  // The output must outlive the object. What is secret does not reach it.
  HostCallback(AlertEvent event, MessageVariables variables, const TextSink& output,
               LogSecrets secrets = {});
  HostCallback(const HostCallback&) = delete;
  HostCallback& operator=(const HostCallback&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) noexcept override;
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32 level, BSTR text) noexcept override;
  // E_FAIL when there is no event.
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) noexcept override;

  // Ends the line that the log's last text has left open, if it has.
  void FinishLog();

 private:
  ~HostCallback() = default;  // by the last Release

  const AlertEvent event_;
  const MessageVariables variables_;
  const TextSink& output_;
  const LogSecrets secrets_;
  LogText log_text_;
  volatile LONG references_ = 1;
};

}  // namespace brantel::host
