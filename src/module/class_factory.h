#pragma once

#include <windows.h>
#include <unknwn.h>

#include "module/class_table.h"
#include "system/windows/com_pointer_win32.h"

namespace brantel {

// The standard class factory of one row of the class table. It does not count as a live object:
// the cache keeps it until the module is unloaded.
class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const NotifierClass& notifier_class) : class_(notifier_class) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid,
                                           void** object) noexcept override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override;

 private:
  ~ClassFactory() = default;  // by the last Release

  const NotifierClass& class_;
  volatile LONG references_ = 1;
};

// Sets up the cache of class factories when the module is loaded, and releases what it holds when
// it is unloaded.
void OpenClassFactoryCache() noexcept;
void CloseClassFactoryCache() noexcept;

// The class factory of the class with this identifier, created when it is first asked for: one for
// each class, however many threads ask. Null when there is no such class. Throws std::bad_alloc.
IClassFactory* FindClassFactory(REFCLSID clsid);

}  // namespace brantel
