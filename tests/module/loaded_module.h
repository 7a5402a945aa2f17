#pragma once

#include <windows.h>
#include <unknwn.h>

#include <stdexcept>
#include <string>

#include "brantel/notifier_contract.h"
#include "system/windows/com_pointer_win32.h"
#include "tests/module/expected_classes.h"

namespace brantel {

// The full path of the module under test: what the environment variable BRANTEL_MODULE names, else
// out\win32\Brantel_Notifications.dll (or win64) in the nearest folder above the test program that
// has one. Throws std::runtime_error when there is none.
std::wstring ModuleFile();

// Holds the module loaded and calls it the way a host does, through its exports alone. Failing to
// load it, to find an export or to create an object throws std::runtime_error.
class LoadedModule {
 public:
  LoadedModule() : LoadedModule(ModuleFile()) {}
  explicit LoadedModule(const std::wstring& file);
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;
  ~LoadedModule();

  [[nodiscard]] HMODULE handle() const { return handle_; }

  HRESULT CanUnloadNow() const { return can_unload_now_(); }
  HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** object) const {
    return get_class_object_(clsid, iid, object);
  }
  HRESULT RegisterServer() const { return register_server_(); }
  HRESULT UnregisterServer() const { return unregister_server_(); }

  [[nodiscard]] ComPointer<IClassFactory> FactoryOf(const ExpectedClass& expected) const;

  template <typename Interface>
  [[nodiscard]] ComPointer<Interface> Create(const ExpectedClass& expected,
                                             const wchar_t* iid) const {
    ComPointer<Interface> created;
    if (FAILED(FactoryOf(expected)->CreateInstance(nullptr, ToGuid(iid), created.put_void()))) {
      throw std::runtime_error("the module does not create this object");
    }
    return created;
  }
  [[nodiscard]] ComPointer<INotifier> CreateNotifier(const ExpectedClass& expected) const {
    return Create<INotifier>(expected, kNotifierIid);
  }

 private:
  HMODULE handle_;
  HRESULT(STDAPICALLTYPE* can_unload_now_)() = nullptr;
  HRESULT(STDAPICALLTYPE* get_class_object_)(REFCLSID, REFIID, void**) = nullptr;
  HRESULT(STDAPICALLTYPE* register_server_)() = nullptr;
  HRESULT(STDAPICALLTYPE* unregister_server_)() = nullptr;
};

}  // namespace brantel
