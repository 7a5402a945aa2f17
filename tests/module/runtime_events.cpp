#include "tests/module/runtime_events.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

#include "tests/module/import_patch.h"

namespace brantel {
namespace {

// Takes no memory, which others count.
std::array<HANDLE, 4096> events{};
SRWLOCK events_lock = SRWLOCK_INIT;

// The system's own. Found beforehand: a guarded static would be a lock again.
decltype(&CreateEventA) create_event = nullptr;
decltype(&CloseHandle) close_handle = nullptr;

template <typename Function>
void FindInKernel(const char* name, Function& found) {
  found = reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), name)));
}

// Whether the old one was there.
bool Replace(HANDLE old_handle, HANDLE new_handle) {
  AcquireSRWLockExclusive(&events_lock);
  const auto slot = std::ranges::find(events, old_handle);
  const bool is_there = slot != events.end();
  if (is_there) *slot = new_handle;
  ReleaseSRWLockExclusive(&events_lock);
  return is_there;
}

HANDLE WINAPI NoteNewEvent(LPSECURITY_ATTRIBUTES attributes, BOOL is_manual, BOOL is_set,
                           LPCSTR name) {
  HANDLE event = create_event(attributes, is_manual, is_set, name);
  if (event != nullptr && !Replace(nullptr, event)) std::abort();
  return event;
}

// Before it is closed: afterwards its number may be another handle's.
BOOL WINAPI NoteClosing(HANDLE handle) {
  if (handle != nullptr) Replace(handle, nullptr);
  return close_handle(handle);
}

}  // namespace

void WatchRuntimeEvents() {
  FindInKernel("CreateEventA", create_event);
  FindInKernel("CloseHandle", close_handle);
  HMODULE program = GetModuleHandleW(nullptr);
  static const ImportPatch creating(program, "CreateEventA", reinterpret_cast<void*>(NoteNewEvent));
  static const ImportPatch closing(program, "CloseHandle", reinterpret_cast<void*>(NoteClosing));
}

std::vector<HANDLE> RuntimeEvents() {
  AcquireSRWLockShared(&events_lock);
  const auto known = events;
  ReleaseSRWLockShared(&events_lock);
  std::vector<HANDLE> open;
  std::ranges::copy_if(known, std::back_inserter(open),
                       [](HANDLE event) { return event != nullptr; });
  std::ranges::sort(open);
  return open;
}

}  // namespace brantel
