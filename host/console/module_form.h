#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "description/class_description.h"
#include "host/console/form_text.h"

namespace brantel::host {

// The fields of the module's own pages beside those of the class.
inline constexpr std::string_view kOriginalNameField = "origname";
inline constexpr std::string_view kInstanceNameField = "instancename";

// What was posted from one of the module's pages, as the module reads it. Browsers write most signs
// as percent escapes, which the module would store as they are; so what was typed is handed over,
// and then asked for again by the module's own rules. Nothing when one of the values would be read
// otherwise than it was typed: the module's forms have no way to tell of "&" and "+" in a value, or
// of a value in which another field seems to begin.
std::optional<std::string> FormForModule(const ClassDescription& notifier_class,
                                         const FormValues& posted);

}  // namespace brantel::host
