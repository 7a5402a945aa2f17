#include "tests/unit/failing_allocations.h"

#include <limits>

namespace brantel {
namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

// The function of AlertLog that is running, below which there may be others.
constinit const void* logging_function = nullptr;
// How many allocations for the log are still to succeed.
constinit std::size_t allocations_left = kNone;
constinit bool has_failed = false;

}  // namespace

FailingLogAllocation::FailingLogAllocation(std::size_t index) {
  allocations_left = index;
  has_failed = false;
}

FailingLogAllocation::~FailingLogAllocation() {
  allocations_left = kNone;
}

bool FailingLogAllocation::HasFailed() const {
  return has_failed;
}

bool FailsForTheLog() noexcept {
  if (logging_function == nullptr || allocations_left == kNone) return false;
  has_failed = allocations_left == 0;
  allocations_left = has_failed ? kNone : allocations_left - 1;
  return has_failed;
}

}  // namespace brantel

// The compiler's hooks, by the names that it calls.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

void __cyg_profile_func_enter(void* function, void* caller);
void __cyg_profile_func_exit(void* function, void* caller);

void __cyg_profile_func_enter(void* function, void* /*caller*/) {
  if (brantel::logging_function == nullptr) brantel::logging_function = function;
}

void __cyg_profile_func_exit(void* function, void* /*caller*/) {
  if (brantel::logging_function == function) brantel::logging_function = nullptr;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
