#include "tests/module/process_level.h"

#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include "system/windows/handle_win32.h"
#include "tests/module/runtime_events.h"

namespace brantel {
namespace {

// Wine's major version; 0 on Windows.
int WineVersion() {
  void* const function =
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version"));
  if (function == nullptr) return 0;
  const char* const text = reinterpret_cast<const char*(__cdecl*)()>(function)();
  int version = 0;
  std::from_chars(text, text + std::strlen(text), version);
  return version;
}

// All handles of the system. GetProcessHandleCount would do for the number, but is not implemented
// everywhere: it succeeds and says 0.
std::vector<std::byte> HandlesOfTheSystem() {
  std::vector<std::byte> table(std::size_t{1} << 16);
  while (true) {
    const NTSTATUS status = NtQuerySystemInformation(SystemHandleInformation, table.data(),
                                                     static_cast<ULONG>(table.size()), nullptr);
    if (status >= 0) return table;
    if (table.size() > std::size_t{1} << 26) throw std::runtime_error("handles cannot be listed");
    table.resize(table.size() * 2);
  }
}

std::wstring KindOf(HANDLE handle) {
  alignas(PUBLIC_OBJECT_TYPE_INFORMATION) std::array<std::byte, 1024> buffer{};
  const auto& information = *reinterpret_cast<const PUBLIC_OBJECT_TYPE_INFORMATION*>(buffer.data());
  const NTSTATUS status = NtQueryObject(handle, ObjectTypeInformation, buffer.data(),
                                        static_cast<ULONG>(buffer.size()), nullptr);
  if (status < 0) return L"closed meanwhile";
  return {information.TypeName.Buffer, information.TypeName.Length / sizeof(wchar_t)};
}

void AddLevelOf(HANDLE heap, HeapLevel& level) {
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry) != FALSE) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
    ++level.blocks;
    level.bytes += entry.cbData;
  }
  HeapUnlock(heap);
}

}  // namespace

std::vector<HANDLE> OpenHandles() {
  const std::vector<std::byte> table = HandlesOfTheSystem();
  const auto& information = *reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(table.data());
  // The table keeps 16 bits of each process's number.
  const auto own_process = static_cast<USHORT>(GetCurrentProcessId());

  std::vector<HANDLE> handles;
  for (ULONG i = 0; i < information.Count; ++i) {
    const SYSTEM_HANDLE_ENTRY& entry = information.Handle[i];
    if (static_cast<USHORT>(entry.OwnerPid) != own_process) continue;
    handles.push_back(reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(entry.HandleValue)));
  }
  std::ranges::sort(handles);
  std::vector<HANDLE> without;
  std::ranges::set_difference(handles, RuntimeEvents(), std::back_inserter(without));
  return without;
}

std::map<std::wstring, std::size_t> CountHandles() {
  std::map<std::wstring, std::size_t> counts;
  for (HANDLE handle : OpenHandles()) {
    ++counts[KindOf(handle)];
  }
  return counts;
}

std::size_t CountThreads() {
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  if (!snapshot) throw std::runtime_error("threads cannot be listed");
  THREADENTRY32 thread{};
  thread.dwSize = sizeof(thread);
  std::size_t count = 0;
  for (BOOL more = Thread32First(snapshot.get(), &thread); more != FALSE;
       more = Thread32Next(snapshot.get(), &thread)) {
    if (thread.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
  return count;
}

HeapLevel MeasureHeaps() {
  std::array<HANDLE, 64> heaps{};
  const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  if (count > heaps.size()) throw std::runtime_error("more heaps than expected");
  HeapLevel level;
  for (DWORD i = 0; i < count; ++i)
    AddLevelOf(heaps.at(i), level);
  return level;
}

bool LevelsAreRough() {
  static const bool rough = WineVersion() >= 10;
  return rough;
}

std::size_t HeapGrowth() {
  return LevelsAreRough() ? 65536 : 4096;
}

std::size_t FreeThreadSlots() {
  std::vector<DWORD> slots;
  for (DWORD slot = TlsAlloc(); slot != TLS_OUT_OF_INDEXES; slot = TlsAlloc()) {
    slots.push_back(slot);
  }
  for (const DWORD slot : slots)
    TlsFree(slot);
  return slots.size();
}

}  // namespace brantel
