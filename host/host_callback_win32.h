#pragma once

#include "framework/notifier_contract.h"
#include "host/alert_event.h"
#include "host/log_text.h"
#include "host/message_variables.h"
#include "host/output_stream_win32.h"

namespace brantel::host {

// The host that a notifier is bound to for one alert: answers with the alert's event, fills in its
// variables, and prints its log as it comes.
class HostCallback final : public INotifierHost {
 public:
  // The output must outlive the object.
  HostCallback(AlertEvent event, MessageVariables variables, const OutputStream& output);
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
  const OutputStream& output_;
  LogText log_text_;
  volatile LONG references_ = 1;
};

}  // namespace brantel::host
