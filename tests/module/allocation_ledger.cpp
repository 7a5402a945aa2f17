#include "tests/module/allocation_ledger.h"

#include <windows.h>
#include <objbase.h>

#include <atomic>
#include <stdexcept>

namespace brantel {
namespace {

std::atomic<long> outstanding = 0;
std::atomic<long> stray_frees = 0;

void NoteFree(const void* block, BOOL allocated_under_the_spy) {
  if (block == nullptr) return;
  if (allocated_under_the_spy != FALSE) {
    --outstanding;
  } else {
    ++stray_frees;
  }
}

// The system calls it for one allocation at a time.
class AllocationSpy final : public IMallocSpy {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IMallocSpy;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  // It lives as long as the process.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
  void* STDMETHODCALLTYPE PostAlloc(void* block) override {
    if (block != nullptr) ++outstanding;
    return block;
  }

  void* STDMETHODCALLTYPE PreFree(void* block, BOOL spied) override {
    NoteFree(block, spied);
    return block;
  }
  void STDMETHODCALLTYPE PostFree(BOOL) override {}

  // Counted as a free and an allocation.
  SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** passed_on,
                                      BOOL spied) override {
    *passed_on = reallocated_ = block;
    NoteFree(block, spied);
    return size;
  }
  void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override {
    const bool kept_for_want_of_memory = block == nullptr && reallocated_ != nullptr;
    if (block != nullptr || kept_for_want_of_memory) ++outstanding;
    return block;
  }

  void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
  SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
  void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
  int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int answer) override { return answer; }
  void STDMETHODCALLTYPE PreHeapMinimize() override {}
  void STDMETHODCALLTYPE PostHeapMinimize() override {}

 private:
  void* reallocated_ = nullptr;
};

// Freed BSTRs would wait in a cache for their next use and still count as allocated.
void TurnOffTheCacheOfFreedBstrs() {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache");
  if (found == nullptr) throw std::runtime_error("the cache of freed BSTRs cannot be turned off");
  reinterpret_cast<void(WINAPI*)()>(reinterpret_cast<void*>(found))();
}

}  // namespace

void OpenAllocationLedger() {
  TurnOffTheCacheOfFreedBstrs();
  static AllocationSpy spy;
  if (FAILED(CoRegisterMallocSpy(&spy))) {
    throw std::runtime_error("the task memory cannot be watched");
  }
}

AllocationBalance::AllocationBalance()
    : outstanding_at_start_(outstanding), stray_frees_at_start_(stray_frees) {}

long AllocationBalance::Outstanding() const {
  return outstanding - outstanding_at_start_;
}

long AllocationBalance::StrayFrees() const {
  return stray_frees - stray_frees_at_start_;
}

}  // namespace brantel
