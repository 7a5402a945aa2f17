#pragma once

#include <cstdlib>

namespace brantel {

// Whether tests that try things by number or by chance are to take the time to try many: ./test
// --thorough says so.
inline bool IsThorough() {
  return std::getenv("BRANTEL_THOROUGH") != nullptr;
}

}  // namespace brantel
