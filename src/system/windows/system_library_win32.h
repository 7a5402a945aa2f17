#pragma once

#include <windows.h>

#include <string_view>
#include <utility>

namespace brantel {

// Loads a library of the system. It is looked for in the system's own directory alone, and so is
// what it imports: whoever may write beside the host, into the current directory or into one of the
// PATH must not run code in the host by the library's name. Null when there is no such library.
HMODULE LoadSystemLibrary(std::string_view name);

// Holds such a library loaded while it lives.
class SystemLibrary {
 public:
  // Empty when there is no such library.
  explicit SystemLibrary(std::string_view name);
  SystemLibrary(SystemLibrary&& other) noexcept : module_(std::exchange(other.module_, nullptr)) {}
  SystemLibrary& operator=(SystemLibrary&& other) noexcept {
    std::swap(module_, other.module_);
    return *this;
  }
  ~SystemLibrary() {
    if (module_ != nullptr) FreeLibrary(module_);
  }

  explicit operator bool() const noexcept { return module_ != nullptr; }

  // Stores the entry point of this name, of whose type the caller is sure, or null.
  template <typename Function>
  void Find(const char* name, Function*& function) const noexcept {
    function = reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(module_, name)));  // by void*: any type of function
  }

 private:
  HMODULE module_;
};

}  // namespace brantel
