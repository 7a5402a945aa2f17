#include "tests/far_ends/local_far_ends.h"

#include <cstring>

#include "tests/far_ends/deliveries.h"

namespace brantel {
namespace {

constexpr std::size_t kLongestCommandLine = 32768;

BOOL WINAPI PlayAtOnce(const char* file, HMODULE, DWORD) {
  NoteDelivery(file);
  return TRUE;
}

BOOL WINAPI StartNothing(const char*, char* command_line, SECURITY_ATTRIBUTES*,
                         SECURITY_ATTRIBUTES*, BOOL, DWORD, void*, const char*, STARTUPINFOA*,
                         PROCESS_INFORMATION* process) {
  const std::size_t length = std::strlen(command_line);
  if (length >= kLongestCommandLine) {
    SetLastError(ERROR_FILENAME_EXCED_RANGE);
    return FALSE;
  }
  NoteDelivery(command_line);
  // The system may cut the line in two.
  if (length != 0) command_line[0] = '\0';
  HANDLE const thread = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  *process = {CreateEventW(nullptr, FALSE, FALSE, nullptr), thread, 1, 1};
  NoteThreadHandle(thread);
  return TRUE;
}

}  // namespace

LocalFarEnds::LocalFarEnds(HMODULE module)
    : play_(module, "PlaySoundA", reinterpret_cast<void*>(&PlayAtOnce)),
      start_(module, "CreateProcessA", reinterpret_cast<void*>(&StartNothing)) {}

}  // namespace brantel
