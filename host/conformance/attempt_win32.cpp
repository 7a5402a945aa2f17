#include "host/conformance/attempt_win32.h"

#include <utility>

namespace brantel::host {

Seen Kept() {
  return {};
}

Seen Broken(std::string words) {
  return {CheckState::kBroken, std::move(words)};
}

Seen NotTried(std::string words) {
  return {CheckState::kNotTried, std::move(words)};
}

Seen OutcomeOf(Attempt attempt, const TriedLibrary& library) {
  try {
    return attempt(library);
  } catch (const Fault& fault) {
    return Broken(fault.what());
  } catch (const NoObject& reason) {
    return NotTried(reason.what());
  } catch (...) {
    // The host's. It ends the process elsewhere: programs for 32 bits cannot catch what another
    // module throws.
    TerminateProcess(GetCurrentProcess(), kExceptionOfGcc);
    throw;
  }
}

}  // namespace brantel::host
