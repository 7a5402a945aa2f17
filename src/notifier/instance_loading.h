#pragma once

#include <optional>
#include <string_view>

#include "description/instance_layout.h"
#include "instance/instance_argument.h"
#include "instance/instance_codec.h"
#include "instance/instance_files.h"
#include "notifier/alert_log.h"
#include "notifier/notifier_host.h"

namespace brantel {

// Tells in three log lines that an instance cannot be loaded: which, why, and a line end.
void LogFailedLoad(const AlertLog& log, const InstanceLayout& layout, std::u16string_view which);

// The same of the class's instance that prefills new ones, by a name of its own.
void LogFailedDefaultLoad(const AlertLog& log, const InstanceLayout& layout);

// Loads the instance that an alert, or a request for its edit page, names. When that fails, also
// for want of memory, tells the host so, with the argument as it came.
std::optional<Instance> LoadInstanceForAlert(InstanceFiles& files, const InstanceLayout& layout,
                                             const InstanceArgument& argument, NotifierHost* host);

}  // namespace brantel
