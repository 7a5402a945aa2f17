#include "bench/module/loaded_notifier.h"

#include <bit>
#include <stdexcept>

namespace brantel {
namespace {

void Require(HRESULT result, const char* what) {
  if (result != S_OK) throw std::runtime_error(what);
}

ComPointer<INotifier> Create(HMODULE module, const CLSID& clsid) {
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto get_class_object = reinterpret_cast<GetClassObject>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  ComPointer<IClassFactory> factory;
  ComPointer<INotifier> notifier;
  Require(get_class_object(clsid, IID_IClassFactory, factory.put_void()), "no class factory");
  Require(factory->CreateInstance(nullptr, IID_INotifier, notifier.put_void()), "no notifier");
  return notifier;
}

}  // namespace

LoadedNotifier::LoadedNotifier(HMODULE module, const ClassDescription& description)
    : notifier_(Create(module, std::bit_cast<CLSID>(description.clsid))) {
  Require(notifier_->Initialize(&host_), "the notifier is not bound");
}

void LoadedNotifier::Send(const Bstr& instance) {
  Require(notifier_->Send(instance.get()), "an alert was not delivered");
}

Bstr LoadedNotifier::MakeEditPage(const Bstr& instance) {
  ComPointer<INotifierWebConfig> pages;
  Require(notifier_->QueryInterface(IID_INotifierWebConfig, pages.put_void()), "no web pages");
  Bstr page;
  Require(pages->GetEditPage(instance.get(), page.in_out()), "no edit page");
  return page;
}

}  // namespace brantel
