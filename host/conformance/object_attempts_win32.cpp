#include "host/conformance/object_attempts_win32.h"

#include <windows.h>

#include <string>

#include "brantel/notifier_contract.h"
#include "host/outcome/result_text.h"

namespace brantel::host {
namespace {

// An interface that no host has.
constexpr IID kNobodysInterface = {
    0x51C7DBD6, 0x3A0E, 0x4D54, {0x93, 0x28, 0x6B, 0xC4, 0x0F, 0x51, 0x7E, 0xA9}};

// Objects that live as long as their host may answer anything there.
bool CountsReferences(IUnknown* object) {
  const ULONG one_more = object->AddRef();
  const ULONG two_more = object->AddRef();
  object->Release();
  object->Release();
  return two_more == one_more + 1;
}

ULONG ReferencesOf(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

}  // namespace

Seen TryInterface(const TriedLibrary& library) {
  try {
    static_cast<void>(library.MakeHost(kAlertItemDown));
    return Kept();
  } catch (const NoObject& reason) {
    return Broken(reason.what());
  }
}

Seen TryIdentity(const TriedLibrary& library) {
  IUnknown* const object = library.Make(kAlertItemDown);
  void* of_object = nullptr;
  void* of_interface = nullptr;
  const HRESULT first = object->QueryInterface(IID_IUnknown, &of_object);
  const HRESULT second = HostOf(object)->QueryInterface(IID_IUnknown, &of_interface);
  if (FAILED(first) || FAILED(second)) return Broken("QueryInterface has no IUnknown");
  return of_object == of_interface ? Kept() : Broken("it has two");
}

Seen TryUnknownInterface(const TriedLibrary& library) {
  int anything = 0;
  void* stored = &anything;
  const HRESULT result = library.Make(kAlertItemDown)->QueryInterface(kNobodysInterface, &stored);
  if (result != E_NOINTERFACE) return Broken("it answers " + ResultText(result));
  return stored == nullptr ? Kept() : Broken("it does not store null");
}

Seen TryReferences(const TriedLibrary& library) {
  IUnknown* const object = library.Make(kAlertItemDown);
  if (!CountsReferences(object)) return NotTried("it does not count references");
  const ULONG before = ReferencesOf(object);
  INotifierHost* const stored = HostOf(object);
  const ULONG with_pointer = ReferencesOf(object);
  if (with_pointer != before + 1)
    return Broken("of QueryInterface " + std::to_string(before) + " become " +
                  std::to_string(with_pointer));
  stored->Release();
  return ReferencesOf(object) == before ? Kept() : Broken("Release takes none away");
}

Seen TryEnd(const TriedLibrary& library) {
  IUnknown* const object = library.Make(kAlertItemDown);
  if (!CountsReferences(object)) return NotTried("it does not count references");
  const ULONG left = object->Release();
  return left == 0 ? Kept()
                   : Broken("MakeNotifierHost gives one, and behind its Release there are " +
                            std::to_string(left));
}

}  // namespace brantel::host
