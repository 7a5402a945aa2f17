#pragma once

namespace brantel {

// Counts the task memory of this process, of which BSTRs are made: what the module, the system's
// libraries and the tests have allocated and not freed. To be opened once, before any of it is
// used. Throws std::runtime_error when the system does not let its allocations be watched.
void OpenAllocationLedger();

// What has come and gone since this was made.
class AllocationBalance {
 public:
  AllocationBalance();

  // Blocks allocated and not freed; negative when more were freed.
  [[nodiscard]] long Outstanding() const;

  // Frees of what was no block, such as a BSTR freed twice.
  [[nodiscard]] long StrayFrees() const;

 private:
  long outstanding_at_start_;
  long stray_frees_at_start_;
};

}  // namespace brantel
