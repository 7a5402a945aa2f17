#pragma once

#include <memory>
#include <optional>
#include <string>

#include "brantel/notifier_contract.h"
#include "host/module/module_library_win32.h"
#include "host/system/com_apartment_win32.h"
#include "system/windows/com_pointer_win32.h"

namespace brantel::host {

// A notifier object, and what has to outlive it: the apartment of the thread that has created it,
// and the module that it lives in when this host has loaded that by its file.
struct CreatedNotifier {
  std::unique_ptr<const ComApartment> apartment;
  std::unique_ptr<const ModuleLibrary> module;
  ComPointer<INotifier> notifier;
};

// A notifier of that class from the module file (UTF-8), or of the registered class when no file is
// given. Throws CommandFailure when it cannot be created.
CreatedNotifier CreateNotifier(const std::string& class_name,
                               const std::optional<std::string>& module_file);

}  // namespace brantel::host
