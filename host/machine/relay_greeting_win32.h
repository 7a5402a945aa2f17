#pragma once

#include <string>

namespace brantel::host {

// The first line that a mail relay says on port 25. Empty when nothing listens there, or nothing is
// said within ten seconds.
std::string ReadRelayGreeting(const std::string& address);

}  // namespace brantel::host
