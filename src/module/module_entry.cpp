// Where the system enters the module, around the compiler's own entry point: what the compiler's
// library leaves open when it has been left for the last time is closed here. Its registry of stack
// frames takes a semaphore each time the module is loaded and has no way to give it back, so that a
// host that loads the module for every alert would lose a handle each time.
#include <windows.h>

#include <array>
#include <atomic>

namespace {

using CreateFunction = decltype(CreateSemaphoreW);
using CloseFunction = decltype(CloseHandle);

// Semaphores of the module that are open. The library has few, and one for which there is no place
// stays open.
constinit std::array<std::atomic<HANDLE>, 8> open_semaphores;

void Exchange(HANDLE present, HANDLE next) noexcept {
  for (std::atomic<HANDLE>& place : open_semaphores) {
    HANDLE expected = present;
    if (place.compare_exchange_strong(expected, next)) return;
  }
}

}  // namespace

// The linker puts these in the place of what the module imports (its option --wrap), and gives the
// imports themselves the other names. The build says what they are called.
#define TEXT_OF_VALUE(macro) TEXT_OF(macro)
#define TEXT_OF(words) #words
#define LINKER_NAME(kind, import) TEXT_OF_VALUE(__USER_LABEL_PREFIX__) "__" kind "_" import
extern "C" {

extern CreateFunction* const real_create_semaphore asm(LINKER_NAME("real", CREATE_SEMAPHORE));
extern CloseFunction* const real_close_handle asm(LINKER_NAME("real", CLOSE_HANDLE));

static HANDLE WINAPI CreateKnownSemaphore(SECURITY_ATTRIBUTES* attributes, LONG initial, LONG most,
                                          const wchar_t* name) {
  HANDLE made = real_create_semaphore(attributes, initial, most, name);
  if (made != nullptr) Exchange(nullptr, made);
  return made;
}

static BOOL WINAPI CloseKnownHandle(HANDLE handle) {
  Exchange(handle, nullptr);
  return real_close_handle(handle);
}

extern CreateFunction* const wrapped_create_semaphore asm(LINKER_NAME("wrap", CREATE_SEMAPHORE));
extern CloseFunction* const wrapped_close_handle asm(LINKER_NAME("wrap", CLOSE_HANDLE));
constinit CreateFunction* const wrapped_create_semaphore = CreateKnownSemaphore;
constinit CloseFunction* const wrapped_close_handle = CloseKnownHandle;

BOOL WINAPI DllMainCRTStartup(HINSTANCE instance, DWORD reason, void* process_ends);

BOOL WINAPI ModuleEntry(HINSTANCE instance, DWORD reason, void* process_ends) {
  const BOOL result = DllMainCRTStartup(instance, reason, process_ends);
  // The end of a process takes everything with it.
  if (reason == DLL_PROCESS_DETACH && process_ends == nullptr) {
    for (std::atomic<HANDLE>& place : open_semaphores) {
      if (HANDLE left = place.exchange(nullptr)) real_close_handle(left);
    }
  }
  return result;
}

}  // extern "C"
