#include "tests/module/recording_host.h"

#include <oleauto.h>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/utf8_text.h"

namespace brantel {
namespace {

void Replace(BSTR* text, const Expansion& expansion) {
  const std::wstring copy(Bstr::ViewOf(*text));
  switch (expansion.replacement) {
    case Replacement::kCopy:
      SysFreeString(*text);
      *text = Bstr(copy).release();
      return;
    case Replacement::kText:
      SysFreeString(*text);
      *text = Bstr(expansion.text).release();
      return;
    case Replacement::kNull:
      SysFreeString(*text);
      *text = nullptr;
      return;
    case Replacement::kNone:
      return;
  }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const LogCall& call) {
  return out << "level " << call.level << " \"" << ToUtf8(call.text) << "\"";
}

std::ostream& operator<<(std::ostream& out, const ExpandCall& call) {
  return call.null ? out << "null" : out << "\"" << ToUtf8(call.text) << "\"";
}

HRESULT RecordingHost::QueryInterface(REFIID iid, void** object) {
  queries.push_back(iid);
  if (during_query) during_query();
  *object = nullptr;
  if (FAILED(query_result) || query_yields_null) return query_result;
  if (iid != ToGuid(kUnknownIid) && iid != ToGuid(kNotifierHostIid)) return E_NOINTERFACE;
  *object = static_cast<INotifierHost*>(this);
  AddRef();
  return query_result;
}

ULONG RecordingHost::AddRef() {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG RecordingHost::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (during_release) during_release();
  return static_cast<ULONG>(left);
}

HRESULT RecordingHost::ExpandMessage(BSTR* text) {
  expand_calls.push_back({*text == nullptr, std::wstring(Bstr::ViewOf(*text))});
  if (during_expansion) during_expansion();
  Replace(text, expansion);
  return expansion.result;
}

HRESULT RecordingHost::LogMessage(UINT32 level, BSTR text) {
  log_calls.push_back({level, std::wstring(Bstr::ViewOf(text))});
  if (during_log) during_log();
  return log_result;
}

HRESULT RecordingHost::GetAlertTrigger(UINT32* flags) {
  ++trigger_calls;
  if (SUCCEEDED(trigger_result)) *flags = trigger_word;
  return trigger_result;
}

HRESULT HostBehindAnotherObject::QueryInterface(REFIID iid, void** object) {
  if (iid == ToGuid(kNotifierHostIid)) return host_.QueryInterface(iid, object);
  *object = nullptr;
  if (iid != ToGuid(kUnknownIid)) return E_NOINTERFACE;
  *object = this;
  AddRef();
  return S_OK;
}

ULONG HostBehindAnotherObject::AddRef() {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG HostBehindAnotherObject::Release() {
  return static_cast<ULONG>(InterlockedDecrement(&references_));
}

}  // namespace brantel
