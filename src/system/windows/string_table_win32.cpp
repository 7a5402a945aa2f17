#include <windows.h>

#include <array>

#include "system/windows/module_instance_win32.h"
#include "text/string_table.h"

namespace brantel {
namespace {

// The longest text that the string table may hold, with its NUL.
constexpr int kTextCapacity = 512;

}  // namespace

std::string LoadText(unsigned id) {
  std::array<char, kTextCapacity> buffer{};
  const int length = LoadStringA(ModuleInstance(), id, buffer.data(), kTextCapacity);
  if (length <= 0) return LookupFailureText(id);
  return {buffer.data(), static_cast<std::size_t>(length)};
}

}  // namespace brantel
