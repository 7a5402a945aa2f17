#include "tests/soak/process_levels.h"

#include <windows.h>
#include <winternl.h>

#include <cstdint>
#include <sstream>

namespace brantel {
namespace {

std::size_t CommittedBytes() {
  std::size_t bytes = 0;
  MEMORY_BASIC_INFORMATION region{};
  for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
       at += region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
  }
  return bytes;
}

// What the system has of each graphics object. GetGuiResources would do for the number, but is not
// implemented everywhere: it succeeds and says 0.
struct GraphicsEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;  // 0: the entry is free
  std::uint8_t flags;
  std::uint64_t user_pointer;
};

std::size_t GdiObjects() {
  constexpr std::size_t kTableOffset = 0x94;  // in the process's environment block
  constexpr std::size_t kEntries = 0x4000;
  const auto* const process =
      reinterpret_cast<const char*>(NtCurrentTeb()->ProcessEnvironmentBlock);
  const auto* const table = *reinterpret_cast<const GraphicsEntry* const*>(process + kTableOffset);
  std::size_t used = 0;
  for (std::size_t i = 0; i < kEntries; ++i)
    used += table[i].type != 0 ? 1U : 0U;
  return used;
}

bool IsIcon(HICON handle) {
  ICONINFO icon{};
  if (GetIconInfo(handle, &icon) == FALSE) return false;
  DeleteObject(icon.hbmColor);
  DeleteObject(icon.hbmMask);
  return true;
}

// A handle's lower half alone is enough to ask what it is.
std::size_t UserObjects() {
  constexpr std::uintptr_t kFirst = 0x20;
  constexpr std::uintptr_t kBehindLast = 0x4000;
  std::size_t used = 0;
  for (std::uintptr_t half = kFirst; half < kBehindLast; half += 2) {
    const bool is_used = IsWindow(reinterpret_cast<HWND>(half)) != FALSE ||
                         IsMenu(reinterpret_cast<HMENU>(half)) != FALSE ||
                         IsIcon(reinterpret_cast<HICON>(half));
    used += is_used ? 1U : 0U;
  }
  return used;
}

}  // namespace

ProcessLevels MeasureProcess() {
  ProcessLevels levels;
  levels.user_objects = UserObjects();
  levels.gdi_objects = GdiObjects();
  levels.committed = CommittedBytes();
  levels.heaps = MeasureHeaps();
  levels.handles = OpenHandles().size();
  return levels;
}

std::string Compared(const ProcessLevels& before, const ProcessLevels& after) {
  std::ostringstream text;
  text << "handles " << before.handles << " -> " << after.handles << ", heap blocks "
       << before.heaps.blocks << " -> " << after.heaps.blocks << ", heap bytes "
       << before.heaps.bytes << " -> " << after.heaps.bytes << ", committed KiB "
       << before.committed / 1024 << " -> " << after.committed / 1024 << ", GDI "
       << before.gdi_objects << " -> " << after.gdi_objects << ", USER " << before.user_objects
       << " -> " << after.user_objects;
  return text.str();
}

}  // namespace brantel
