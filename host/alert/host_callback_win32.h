#pragma once

#include "brantel/notifier_contract.h"
#include "host/alert/alert_event.h"
#include "host/alert/log_taker.h"
#include "host/alert/text_expander.h"

namespace brantel::host {

// The host that a notifier is bound to for one alert: returns the alert's event, fills in its
// variables, and hands its log on as it comes.
class HostCallback final : public INotifierHost {
 public:
  HostCallback(AlertEvent event, TextExpander expand, LogTaker take_log);
  HostCallback(const HostCallback&) = delete;
  HostCallback& operator=(const HostCallback&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) noexcept override;
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32 level, BSTR text) noexcept override;
  // E_FAIL when there is no event.
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) noexcept override;

 private:
  ~HostCallback() = default;  // by the last Release

  const AlertEvent event_;
  const TextExpander expand_;
  const LogTaker take_log_;
  volatile LONG references_ = 1;
};

}  // namespace brantel::host
