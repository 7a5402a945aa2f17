#include "module/class_factory.h"

#include <array>
#include <atomic>
#include <cstring>

#include "module/module_lock.h"
#include "module/notifier_object.h"
#include "system/exception_guard.h"
#include "system/windows/critical_section_win32.h"

namespace brantel {
namespace {

// One entry for each row of the class table.
std::array<std::atomic<ClassFactory*>, kNotifierClassCount> cached_factories;
constinit CriticalSection creation_guard;

bool SameGuid(const Guid& ours, REFCLSID theirs) {
  static_assert(sizeof(Guid) == sizeof(CLSID));
  return std::memcmp(&ours, &theirs, sizeof ours) == 0;
}

ClassFactory* FactoryOfRow(std::size_t row) {
  std::atomic<ClassFactory*>& entry = cached_factories.at(row);
  if (ClassFactory* factory = entry.load()) return factory;
  const CriticalSection::Lock lock(creation_guard);
  if (entry.load() == nullptr) entry.store(new ClassFactory(NotifierClasses()[row]));
  return entry.load();
}

}  // namespace

HRESULT ClassFactory::QueryInterface(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
  *object = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

ULONG ClassFactory::AddRef() noexcept {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG ClassFactory::Release() noexcept {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  // The factory may be released, and the module be asked for, while there is no object yet.
  const auto self = ComPointer<IClassFactory>::Share(this);
  const ModuleLock lock;
  return GuardExceptions([&]() -> Result {
    const auto created = ComPointer<INotifier>::Adopt(new NotifierObject(class_));
    return created->QueryInterface(iid, object);
  });
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept {
  if (lock != FALSE) {
    AddModuleLock();
  } else {
    ReleaseModuleLock();
  }
  return S_OK;
}

void OpenClassFactoryCache() noexcept {
  creation_guard.Initialize();
}

void CloseClassFactoryCache() noexcept {
  for (std::atomic<ClassFactory*>& entry : cached_factories) {
    if (ClassFactory* factory = entry.exchange(nullptr)) factory->Release();
  }
  creation_guard.Delete();
}

IClassFactory* FindClassFactory(REFCLSID clsid) {
  const auto classes = NotifierClasses();
  for (std::size_t row = 0; row < classes.size(); ++row) {
    if (SameGuid(classes[row].description.clsid, clsid)) return FactoryOfRow(row);
  }
  return nullptr;
}

}  // namespace brantel
