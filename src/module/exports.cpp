#include <windows.h>
#include <objbase.h>

#include "module/class_factory.h"
#include "module/module_lock.h"
#include "module/registration_win32.h"
#include "system/exception_guard.h"
#include "system/windows/module_instance_win32.h"

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the compiler's own name
namespace __gnu_cxx {

// Frees the memory that the compiler's library sets aside for exceptions when none is left; nobody
// else does when the module is unloaded.
void __freeres();

}  // namespace __gnu_cxx
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* process_ends) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      brantel::SetModuleInstance(instance);
      brantel::OpenClassFactoryCache();
      break;
    case DLL_PROCESS_DETACH:
      // When the whole process ends its other threads are gone, perhaps while they held the heap's
      // lock: then nothing is given back, since the process takes it all with it.
      if (process_ends == nullptr) {
        brantel::CloseClassFactoryCache();
        __gnu_cxx::__freeres();
      }
      break;
    default:
      break;
  }
  return TRUE;
}

STDAPI DllCanUnloadNow() {
  return brantel::ModuleLockCount() == 0 ? S_OK : S_FALSE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return brantel::GuardExceptions([&]() -> brantel::Result {
    IClassFactory* factory = brantel::FindClassFactory(clsid);
    if (factory == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
    return factory->QueryInterface(iid, object);
  });
}

STDAPI DllRegisterServer() {
  return brantel::GuardExceptions(brantel::RegisterModule);
}

STDAPI DllUnregisterServer() {
  return brantel::GuardExceptions(brantel::UnregisterModule);
}
