#pragma once

#include <optional>
#include <string>

#include "host/checks/checked_system.h"

namespace brantel::host {

// What telephony says of its lines, without one being opened.
VoiceLineState StateOfVoiceLine();

// Has Voice itself open its line, from that module file (UTF-8) or as it is registered. Whether it
// could.
bool OpenVoiceLine(const std::optional<std::string>& module_file);

}  // namespace brantel::host
