#include "tests/module/import_patch.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace brantel {
namespace {

template <typename Structure>
Structure* At(char* base, std::size_t address) {
  return reinterpret_cast<Structure*>(base + address);
}

bool Names(char* base, const IMAGE_THUNK_DATA& thunk, std::string_view function) {
  if (IMAGE_SNAP_BY_ORDINAL(thunk.u1.Ordinal)) return false;
  const auto* const import = At<IMAGE_IMPORT_BY_NAME>(base, thunk.u1.AddressOfData);
  return function == reinterpret_cast<const char*>(import->Name);
}

// Where the address of an imported function stands in the loaded library; null when it imports no
// such function.
void** FindSlot(HMODULE library, std::string_view function) {
  char* const base = reinterpret_cast<char*>(library);
  const auto* const dos = At<IMAGE_DOS_HEADER>(base, 0);
  const auto* const headers = At<IMAGE_NT_HEADERS>(base, static_cast<std::size_t>(dos->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* from = At<IMAGE_IMPORT_DESCRIPTOR>(base, directory.VirtualAddress); from->Name != 0;
       ++from) {
    const auto* names = At<IMAGE_THUNK_DATA>(base, from->OriginalFirstThunk);
    auto* slot = At<void*>(base, from->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++slot) {
      if (Names(base, *names, function)) return slot;
    }
  }
  return nullptr;
}

}  // namespace

ImportPatch::ImportPatch(HMODULE library, const char* function, void* replacement)
    : slot_(FindSlot(library, function)) {
  if (slot_ == nullptr) throw std::runtime_error(std::string("no import of ") + function);
  original_ = *slot_;
  Set(slot_, replacement);
}

ImportPatch::~ImportPatch() {
  Set(slot_, original_);
}

void ImportPatch::Set(void** slot, void* function) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = function;
  VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace brantel
