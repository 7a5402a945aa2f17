#pragma once

#include <memory>
#include <string>

#include "framework/com_pointer_win32.h"
#include "framework/notifier_contract.h"
#include "host/command_line.h"
#include "host/module_library_win32.h"

namespace brantel::host {

// A notifier object, and the module that it lives in when this host has loaded that by its file.
struct CreatedNotifier {
  std::unique_ptr<const ModuleLibrary> module;  // must outlive the notifier
  ComPointer<INotifier> notifier;
};

// A notifier of that class from the invocation's module file, or of the registered class. Throws
// CommandFailure when none could be had.
CreatedNotifier CreateNotifier(const std::string& class_name, const Invocation& invocation);

}  // namespace brantel::host
