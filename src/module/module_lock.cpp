#include "module/module_lock.h"

namespace brantel {
namespace {

volatile LONG lock_count = 0;

}  // namespace

void AddModuleLock() noexcept {
  InterlockedIncrement(&lock_count);
}

void ReleaseModuleLock() noexcept {
  InterlockedDecrement(&lock_count);
}

LONG ModuleLockCount() noexcept {
  return lock_count;
}

}  // namespace brantel
