#pragma once

#include <windows.h>

#include <utility>

namespace brantel {

// Owns an open registry key.
class RegistryHandle {
 public:
  RegistryHandle() = default;
  RegistryHandle(RegistryHandle&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
  RegistryHandle& operator=(RegistryHandle&& other) noexcept {
    std::swap(key_, other.key_);
    return *this;
  }
  ~RegistryHandle() {
    if (key_ != nullptr) RegCloseKey(key_);
  }

  [[nodiscard]] HKEY get() const noexcept { return key_; }

  // For a callee that stores an opened key; nothing may be held yet.
  HKEY* put() noexcept { return &key_; }

 private:
  HKEY key_ = nullptr;
};

}  // namespace brantel
