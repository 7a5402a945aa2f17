#include "tests/far_ends/stand_in_libraries.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace brantel {
namespace {

StandInLibraries* stand_in_libraries = nullptr;

std::string FileName(std::wstring_view path) {
  const std::wstring_view name = path.substr(path.rfind(L'\\') + 1);
  return {name.begin(), name.end()};
}

}  // namespace

StandInLibraries::StandInLibraries(HMODULE module, std::vector<LibraryEntry> entries)
    : entries_(std::move(entries)),
      load_(module, "LoadLibraryExW", reinterpret_cast<void*>(&OnLoadLibrary)),
      find_(module, "GetProcAddress", reinterpret_cast<void*>(&OnGetProcAddress)),
      free_(module, "FreeLibrary", reinterpret_cast<void*>(&OnFreeLibrary)) {
  stand_in_libraries = this;
}

StandInLibraries::~StandInLibraries() {
  stand_in_libraries = nullptr;
}

HMODULE StandInLibraries::OnLoadLibrary(const wchar_t* path, HANDLE file, DWORD flags) {
  const std::string name = FileName(path);
  const auto& entries = stand_in_libraries->entries_;
  const auto found = std::ranges::find_if(entries, [&](const LibraryEntry& entry) {
    return _stricmp(std::string(entry.library).c_str(), name.c_str()) == 0;
  });
  if (found == entries.end()) return LoadLibraryExW(path, file, flags);
  ++stand_in_libraries->loaded_;
  // NOLINTNEXTLINE(*-const-cast): a handle, by which nobody writes.
  return reinterpret_cast<HMODULE>(const_cast<LibraryEntry*>(&*found));
}

const LibraryEntry* StandInLibraries::FindLibrary(HMODULE library) const {
  const auto found = std::ranges::find_if(entries_, [&](const LibraryEntry& entry) {
    return reinterpret_cast<const void*>(library) == &entry;
  });
  return found == entries_.end() ? nullptr : &*found;
}

FARPROC StandInLibraries::OnGetProcAddress(HMODULE library, const char* name) {
  const LibraryEntry* const first = stand_in_libraries->FindLibrary(library);
  if (first == nullptr) return GetProcAddress(library, name);
  for (const LibraryEntry& entry : stand_in_libraries->entries_) {
    if (entry.library == first->library && entry.name == name) {
      return reinterpret_cast<FARPROC>(entry.function);
    }
  }
  return nullptr;
}

BOOL StandInLibraries::OnFreeLibrary(HMODULE library) {
  if (stand_in_libraries->FindLibrary(library) == nullptr) return FreeLibrary(library);
  --stand_in_libraries->loaded_;
  return TRUE;
}

}  // namespace brantel
