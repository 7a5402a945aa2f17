#pragma once

#include <windows.h>

namespace brantel {

// The module's lock count: live notifier objects plus explicit server locks. The host may unload
// the module while it is 0.
void AddModuleLock() noexcept;
void ReleaseModuleLock() noexcept;
LONG ModuleLockCount() noexcept;

// Holds one lock for as long as it lives.
class ModuleLock {
 public:
  ModuleLock() noexcept { AddModuleLock(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock() { ReleaseModuleLock(); }
};

}  // namespace brantel
