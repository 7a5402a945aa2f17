#pragma once

#include <windows.h>

namespace brantel {

// Lets a loaded library call another function instead of one that it imports, until the object is
// destroyed. Throws std::runtime_error when the library imports no function of this name.
class ImportPatch {
 public:
  ImportPatch(HMODULE library, const char* function, void* replacement);
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;
  ~ImportPatch();

 private:
  static void Set(void** slot, void* function);

  void** slot_;
  void* original_;
};

}  // namespace brantel
