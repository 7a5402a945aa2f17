#include "host/conformance/text_memory_win32.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace brantel::host {
namespace {

// Whether the memory behind the pointer can be read.
bool IsReadable(const void* begin, std::size_t size) {
  MEMORY_BASIC_INFORMATION region{};
  const auto* const at = static_cast<const char*>(begin);
  if (VirtualQuery(at, &region, sizeof region) == 0 || region.State != MEM_COMMIT ||
      (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) != 0)
    return false;
  const auto* const end = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
  return at + size <= end || IsReadable(end, static_cast<std::size_t>(at + size - end));
}

}  // namespace

bool IsFreed(BSTR text, UINT length) {
  // Memory that is given back comes again for the next texts of its size.
  std::array<BSTR, 16> others{};
  for (BSTR& other : others)
    other = SysAllocStringLen(nullptr, length);
  const bool is_freed = std::ranges::find(others, text) != others.end();
  for (BSTR other : others) {
    if (other != text) SysFreeString(other);
  }
  return is_freed;
}

std::string FaultOf(BSTR text) {
  if (text == nullptr) return "";
  const auto* const bytes = reinterpret_cast<const char*>(text);
  if (!IsReadable(bytes - sizeof(UINT32), sizeof(UINT32)) ||
      !IsReadable(text, SysStringByteLen(text) + sizeof(wchar_t)) ||
      SysStringByteLen(text) % sizeof(wchar_t) != 0 || text[SysStringLen(text)] != L'\0')
    return "it leaves what is no BSTR";
  return IsFreed(text, SysStringLen(text)) ? "it leaves a text that it has freed" : "";
}

std::size_t PrivateMemory() {
  std::size_t total = 0;
  MEMORY_BASIC_INFORMATION region{};
  for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
       at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) total += region.RegionSize;
  }
  return total;
}

}  // namespace brantel::host
