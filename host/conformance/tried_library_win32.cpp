#include "host/conformance/tried_library_win32.h"

#include "host/outcome/result_text.h"
#include "host/outcome/system_error_text_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

TriedLibrary::TriedLibrary(const std::wstring& file)
    : library_(LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)) {
  if (library_ == nullptr)
    throw NoObject(ToUtf8(file) + " cannot be loaded: " + SystemErrorText(GetLastError()));
  make_ = FindExport<decltype(&MakeNotifierHost)>("MakeNotifierHost");
  read_log_ = FindExport<decltype(&ReadNotifierLog)>("ReadNotifierLog");
  if (make_ == nullptr) throw NoObject(ToUtf8(file) + " does not export MakeNotifierHost");
}

IUnknown* TriedLibrary::Make(std::optional<UINT32> event) const {
  IUnknown* made = nullptr;
  const HRESULT result = make_(event ? &*event : nullptr, &made);
  if (FAILED(result)) throw NoObject("MakeNotifierHost answers " + ResultText(result));
  if (made == nullptr) throw NoObject("MakeNotifierHost stores no object");
  return made;
}

INotifierHost* TriedLibrary::MakeHost(std::optional<UINT32> event) const {
  return HostOf(Make(event));
}

std::optional<Bstr> TriedLibrary::ReadLog(INotifierHost* host) const {
  if (read_log_ == nullptr) return std::nullopt;
  Bstr log;
  const HRESULT result = read_log_(host, log.in_out());
  if (FAILED(result)) throw NoObject("ReadNotifierLog answers " + ResultText(result));
  return log;
}

template <typename Export>
Export TriedLibrary::FindExport(const char* name) const {
  return reinterpret_cast<Export>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
}

INotifierHost* HostOf(IUnknown* object) {
  void* offered = nullptr;
  const HRESULT result = object->QueryInterface(IID_INotifierHost, &offered);
  if (FAILED(result)) throw NoObject("QueryInterface answers " + ResultText(result));
  if (offered == nullptr) throw NoObject("QueryInterface stores no pointer");
  return static_cast<INotifierHost*>(offered);
}

}  // namespace brantel::host
