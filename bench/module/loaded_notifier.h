#pragma once

#include <windows.h>
#include <unknwn.h>

#include "bench/module/module_host.h"
#include "brantel/notifier_contract.h"
#include "description/class_description.h"
#include "system/windows/com_pointer_win32.h"

namespace brantel {

// A notifier of a class that a loaded module has, got through the module's exports and bound to a
// host. Where that fails, std::runtime_error is thrown.
class LoadedNotifier {
 public:
  LoadedNotifier(HMODULE module, const ClassDescription& description);
  LoadedNotifier(const LoadedNotifier&) = delete;
  LoadedNotifier& operator=(const LoadedNotifier&) = delete;
  ~LoadedNotifier() { notifier_->Shutdown(); }

  void Send(const Bstr& instance);
  Bstr MakeEditPage(const Bstr& instance);

 private:
  ModuleHost host_;
  ComPointer<INotifier> notifier_;
};

}  // namespace brantel
