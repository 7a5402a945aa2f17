#pragma once

#include <windows.h>
#include <oleauto.h>

#include <optional>
#include <stdexcept>
#include <string>

#include "brantel/host_conformance.h"
#include "brantel/notifier_contract.h"
#include "system/windows/bstr_win32.h"

namespace brantel::host {

// There is no object to go on with.
class NoObject : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The library with the callback objects of a host. Nobody releases what it makes but the checks
// that are about that: an object that counts wrongly is not to fail elsewhere, and the process ends
// soon.
class TriedLibrary {
 public:
  // Throws NoObject when it cannot be loaded or has no MakeNotifierHost.
  explicit TriedLibrary(const std::wstring& file);

  // A new object, for an event with this trigger word or for none. Throws NoObject where none is
  // made.
  [[nodiscard]] IUnknown* Make(std::optional<UINT32> event) const;
  [[nodiscard]] INotifierHost* MakeHost(std::optional<UINT32> event) const;

  // Nothing when it is not exported.
  [[nodiscard]] std::optional<Bstr> ReadLog(INotifierHost* host) const;

 private:
  template <typename Export>
  [[nodiscard]] Export FindExport(const char* name) const;

  HMODULE library_;
  decltype(&MakeNotifierHost) make_ = nullptr;
  decltype(&ReadNotifierLog) read_log_ = nullptr;
};

// A pointer more to the object. Throws NoObject when it offers none.
INotifierHost* HostOf(IUnknown* object);

}  // namespace brantel::host
