#include "tests/far_ends/alert_host.h"

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"

namespace brantel {
namespace {

void FillIn(std::wstring& text, std::wstring_view variable, const std::wstring& value) {
  for (std::size_t found = text.find(variable); found != std::wstring::npos;
       found = text.find(variable, found + value.size())) {
    text.replace(found, variable.size(), value);
  }
}

}  // namespace

HRESULT AlertHost::QueryInterface(REFIID iid, void** object) {
  *object = nullptr;
  if (Begin()) return kFailure;
  if (iid != ToGuid(kUnknownIid) && iid != ToGuid(kNotifierHostIid)) return E_NOINTERFACE;
  *object = static_cast<INotifierHost*>(this);
  AddRef();
  return S_OK;
}

HRESULT AlertHost::ExpandMessage(BSTR* text) {
  if (Begin()) return kFailure;
  if (expansion) return expansion(text);
  std::wstring filled(Bstr::ViewOf(*text));
  FillIn(filled, L"%n", alert.name);
  FillIn(filled, L"%C", alert.event);
  SysFreeString(*text);
  *text = Bstr(filled).release();
  return S_OK;
}

HRESULT AlertHost::LogMessage(UINT32, BSTR text) {
  constexpr std::size_t kMostKept = 200;
  alert.last_line = Bstr::ViewOf(text).substr(0, kMostKept);
  return Begin() ? kFailure : S_OK;
}

HRESULT AlertHost::GetAlertTrigger(UINT32* flags) {
  if (Begin()) return kFailure;
  *flags = kAlertItemDown;
  return S_OK;
}

bool AlertHost::Begin() {
  const std::size_t number = alert.callbacks++;
  if (at_callback) at_callback(number);
  return fails_at == number;
}

}  // namespace brantel
