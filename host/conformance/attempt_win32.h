#pragma once

#include <stdexcept>
#include <string>

#include "host/conformance/conformance_check.h"
#include "host/conformance/tried_library_win32.h"

namespace brantel::host {

// What became of a check, and in words what was seen, or why it could not be tried.
struct Seen {
  CheckState state = CheckState::kKept;
  std::string words{};
};

Seen Kept();
Seen Broken(std::string words);
Seen NotTried(std::string words);

// What was seen breaks the rule.
class Fault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Tries objects of its own making. May throw Fault and NoObject.
using Attempt = Seen (*)(const TriedLibrary& library);

// Makes the attempt. Ends the process when the host throws.
Seen OutcomeOf(Attempt attempt, const TriedLibrary& library);

}  // namespace brantel::host
