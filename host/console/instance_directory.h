#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "description/class_description.h"
#include "host/console/console_context.h"
#include "host/console/page_template.h"
#include "host/instances/instance_file.h"

namespace brantel::host {

// The instances of the console's directory, by their names.
// The instance that the directory lists under exactly this name.
std::optional<InstanceFile> FindInstance(ConsoleContext& console, std::string_view name);

// Null where it is no instance.
const ClassDescription* ClassOf(const InstanceFile& file);

// The path of its page.
std::string InstancePath(std::string_view name);

// What keeps a new file from having this name; nothing when it may. A file that is to be renamed
// has `present_name` yet, in the code page.
std::optional<std::string> FaultOfName(ConsoleContext& console, std::string_view name,
                                       const std::string* present_name);

// Whether the module's pages of it would show a password.
bool HoldsSecret(ConsoleContext& console, const ClassDescription& notifier_class,
                 const std::string& name);

// All of them with their last attempts, in the list "instances".
void FillInstances(ConsoleContext& console, PageValues& values);

}  // namespace brantel::host
