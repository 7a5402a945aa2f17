#pragma once

#include <windows.h>

#include <atomic>
#include <string_view>
#include <vector>

#include "tests/module/import_patch.h"

namespace brantel {

// A function of a library of the system's that a stand-in has in its place.
struct LibraryEntry {
  std::string_view library;  // its file's name
  std::string_view name;
  void* function;
};

// Gives the module libraries of these entries, and no others, where it loads one of the system's by
// such a name, while this lives. There can be one at a time.
class StandInLibraries {
 public:
  StandInLibraries(HMODULE module, std::vector<LibraryEntry> entries);
  StandInLibraries(const StandInLibraries&) = delete;
  StandInLibraries& operator=(const StandInLibraries&) = delete;
  ~StandInLibraries();

  // How often libraries have been loaded without being freed.
  [[nodiscard]] long loaded() const { return loaded_; }

 private:
  static HMODULE WINAPI OnLoadLibrary(const wchar_t* path, HANDLE file, DWORD flags);
  static FARPROC WINAPI OnGetProcAddress(HMODULE library, const char* name);
  static BOOL WINAPI OnFreeLibrary(HMODULE library);

  [[nodiscard]] const LibraryEntry* FindLibrary(HMODULE library) const;

  // A library's handle is the address of the first of its entries.
  const std::vector<LibraryEntry> entries_;
  std::atomic<long> loaded_ = 0;
  ImportPatch load_;
  ImportPatch find_;
  ImportPatch free_;
};

}  // namespace brantel
