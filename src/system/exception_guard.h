#pragma once

#include <utility>

#include "system/result.h"

namespace brantel {

// Runs the body of a COM method, callback or thread entry, out of which no exception may go: the
// frames above belong to other compilers. Whatever is thrown (in practice, memory that ran out)
// becomes E_FAIL.
template <typename Body>
Result GuardExceptions(Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return kFail;
  }
}

}  // namespace brantel
