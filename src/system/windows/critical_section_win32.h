#pragma once

#include <windows.h>

namespace brantel {

// A lock between the threads of the process. Whoever has one says when it begins and ends: some are
// needed from the moment on at which the module is loaded, before anything is constructed.
class CriticalSection {
 public:
  void Initialize() noexcept { InitializeCriticalSection(&section_); }
  void Delete() noexcept { DeleteCriticalSection(&section_); }

  // Holds the section for as long as it lives.
  class Lock {
   public:
    explicit Lock(CriticalSection& section) noexcept : section_(section.section_) {
      EnterCriticalSection(&section_);
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { LeaveCriticalSection(&section_); }

   private:
    CRITICAL_SECTION& section_;
  };

 private:
  CRITICAL_SECTION section_{};
};

}  // namespace brantel
