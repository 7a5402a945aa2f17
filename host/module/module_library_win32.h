#pragma once

#include <windows.h>
#include <unknwn.h>

#include <memory>
#include <string>
#include <type_traits>

#include "system/windows/com_pointer_win32.h"

namespace brantel::host {

// A module that this host has loaded by its file. It is unloaded in the end when it agrees to that
// itself, which it does once all its objects are released, and stays loaded otherwise.
class ModuleLibrary {
 public:
  // Throws CommandFailure when the file cannot be loaded or lacks one of the four exports.
  explicit ModuleLibrary(const std::wstring& file);
  ModuleLibrary(const ModuleLibrary&) = delete;
  ModuleLibrary& operator=(const ModuleLibrary&) = delete;
  ~ModuleLibrary();

  // Each calls the export of that purpose and returns its result.
  HRESULT Register() const { return register_server_(); }
  HRESULT Unregister() const { return unregister_server_(); }
  HRESULT GetClassFactory(REFCLSID clsid, ComPointer<IClassFactory>& factory) const;

 private:
  struct LibraryDeleter {
    void operator()(HMODULE library) const { FreeLibrary(library); }
  };
  using PlainExport = HRESULT(STDAPICALLTYPE*)();
  using GetClassObjectExport = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

  template <typename Export>
  Export FindExport(const char* name) const;

  std::wstring file_;
  std::unique_ptr<std::remove_pointer_t<HMODULE>, LibraryDeleter> library_;
  PlainExport can_unload_now_;
  PlainExport register_server_;
  PlainExport unregister_server_;
  GetClassObjectExport get_class_object_;
};

}  // namespace brantel::host
