#pragma once

#include <windows.h>

#include <utility>

namespace brantel {

// Owns a kernel handle and closes it.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) noexcept
      : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Handle() {
    if (handle_ != nullptr) CloseHandle(handle_);
  }

  [[nodiscard]] HANDLE get() const noexcept { return handle_; }
  explicit operator bool() const noexcept { return handle_ != nullptr; }

 private:
  HANDLE handle_ = nullptr;
};

}  // namespace brantel
