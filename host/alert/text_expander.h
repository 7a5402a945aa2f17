#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/alert/message_variables.h"

namespace brantel::host {

// Makes an alert's text of a template.
using TextExpander = std::function<std::string(std::string_view message_template)>;

// Puts values in as they are.
TextExpander PlainExpander(const MessageVariables& variables);

// Event text comes from whoever can name a device or send a trap. This one takes out of the values
// what it could do in texts of that class: control characters everywhere, all but digits in what is
// dialled, what makes a path of the name of a wave. A mail ends at a line of a lone full stop,
// which is therefore doubled, as RFC 5321 has it (4.5.2).
TextExpander HarmlessExpander(const MessageVariables& variables, std::string_view class_name);

// The one or the other.
TextExpander ExpanderFor(const MessageVariables& variables, std::string_view class_name,
                         bool takes_raw_values);

}  // namespace brantel::host
