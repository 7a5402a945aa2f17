#include "host/alert/host_callback_win32.h"

#include <utility>

#include "system/exception_guard.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

static_assert(kItemUp.trigger_word == kAlertItemUp);
static_assert(kItemDown.trigger_word == kAlertItemDown);
static_assert(kServiceUp.trigger_word == kAlertServiceUp);
static_assert(kServiceDown.trigger_word == kAlertServiceDown);
static_assert(kTrap.trigger_word == kAlertTrap);

HostCallback::HostCallback(AlertEvent event, TextExpander expand, LogTaker take_log)
    : event_(event), expand_(std::move(expand)), take_log_(std::move(take_log)) {}

HRESULT HostCallback::QueryInterface(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_INotifierHost) return E_NOINTERFACE;
  *object = static_cast<INotifierHost*>(this);
  AddRef();
  return S_OK;
}

ULONG HostCallback::AddRef() noexcept {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG HostCallback::Release() noexcept {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT HostCallback::ExpandMessage(BSTR* text) noexcept {
  if (text == nullptr) return E_POINTER;
  return GuardExceptions([&]() -> Result {
    const std::string message_template = ToUtf8(Bstr::ViewOf(*text));
    Bstr expanded(FromUtf8(expand_(message_template)));
    SysFreeString(*text);
    *text = expanded.release();
    return S_OK;
  });
}

HRESULT HostCallback::LogMessage(UINT32, BSTR text) noexcept {
  return GuardExceptions([&]() -> Result {
    take_log_(ToUtf8(Bstr::ViewOf(text)));
    return S_OK;
  });
}

HRESULT HostCallback::GetAlertTrigger(UINT32* flags) noexcept {
  if (flags == nullptr) return E_POINTER;
  if (!event_.trigger_word) return E_FAIL;
  *flags = *event_.trigger_word;
  return S_OK;
}

}  // namespace brantel::host
