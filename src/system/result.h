#pragma once

#include <cstdint>

namespace brantel {

// A COM status code (HRESULT): negative means failure. Codes of the host pass through unchanged, so
// this is an integer and not an enumeration.
using Result = std::int32_t;

inline constexpr Result kOk = 0;
inline constexpr Result kFail = static_cast<Result>(0x80004005);  // E_FAIL

constexpr bool Failed(Result result) {
  return result < 0;
}

}  // namespace brantel
