#include "host/module/module_library_win32.h"

#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

HMODULE Load(const std::wstring& file) {
  // With the module's own folder as the place for whatever it needs.
  HMODULE library = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (library == nullptr) {
    const DWORD error = GetLastError();
    throw CommandFailure(ExitCode::kFailed, "the module " + ToUtf8(file) +
                                                " cannot be loaded: " + SystemErrorText(error));
  }
  return library;
}

}  // namespace

ModuleLibrary::ModuleLibrary(const std::wstring& file)
    : file_(file),
      library_(Load(file)),
      can_unload_now_(FindExport<PlainExport>("DllCanUnloadNow")),
      register_server_(FindExport<PlainExport>("DllRegisterServer")),
      unregister_server_(FindExport<PlainExport>("DllUnregisterServer")),
      get_class_object_(FindExport<GetClassObjectExport>("DllGetClassObject")) {}

ModuleLibrary::~ModuleLibrary() {
  if (can_unload_now_() != S_OK) static_cast<void>(library_.release());  // stays loaded
}

HRESULT ModuleLibrary::GetClassFactory(REFCLSID clsid, ComPointer<IClassFactory>& factory) const {
  return get_class_object_(clsid, IID_IClassFactory, factory.put_void());
}

template <typename Export>
Export ModuleLibrary::FindExport(const char* name) const {
  FARPROC found = GetProcAddress(library_.get(), name);
  if (found == nullptr) {
    throw CommandFailure(ExitCode::kFailed,
                         "the module " + ToUtf8(file_) + " does not export " + name);
  }
  return reinterpret_cast<Export>(reinterpret_cast<void*>(found));
}

}  // namespace brantel::host
