#include "host/system/event_log_win32.h"

#include <windows.h>

#include <memory>
#include <type_traits>

#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// A source whose messages are those of eventcreate.exe has the text itself as its message of each
// number up to 1000.
constexpr DWORD kEventNumber = 1;

struct EventSourceCloser {
  void operator()(HANDLE source) const { DeregisterEventSource(source); }
};
using EventSource = std::unique_ptr<std::remove_pointer_t<HANDLE>, EventSourceCloser>;

}  // namespace

bool ReportToEventLog(EventKind kind, const std::string& text) {
  const EventSource source(RegisterEventSourceW(nullptr, L"notifyhost"));
  const WORD type =
      kind == EventKind::kInformation ? EVENTLOG_INFORMATION_TYPE : EVENTLOG_ERROR_TYPE;
  const std::wstring wide = FromUtf8(text);
  const wchar_t* strings = wide.c_str();
  return source && ReportEventW(source.get(), type, 0, kEventNumber, nullptr, 1, 0, &strings,
                                nullptr) != FALSE;
}

}  // namespace brantel::host
