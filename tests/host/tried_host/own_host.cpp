// The callback object of notifyhost itself, to try.
#include <windows.h>
#include <oleauto.h>

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "brantel/host_conformance.h"
#include "host/alert/host_callback_win32.h"
#include "host/alert/text_expander.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// By object: what it was given to log, in UTF-8.
std::map<IUnknown*, std::string> logs;

IUnknown* MakeOwnHost(const AlertEvent& event) {
  MessageVariables variables;
  variables.Assign("n=router7");
  // It is not known before there is an object whose log it is.
  const auto log = std::make_shared<std::string*>();
  IUnknown* const made = new HostCallback(event, PlainExpander(variables),
                                          [log](std::string_view text) { (*log)->append(text); });
  *log = &logs[made];
  return made;
}

}  // namespace
}  // namespace brantel::host

HRESULT MakeNotifierHost(const UINT32* event, IUnknown** host) {
  *host = brantel::host::MakeOwnHost(
      {event == nullptr ? std::nullopt : std::optional<std::uint32_t>(*event)});
  return S_OK;
}

HRESULT ReadNotifierLog(IUnknown* host, BSTR* log) {
  *log = brantel::Bstr(brantel::FromUtf8(brantel::host::logs[host])).release();
  return S_OK;
}
