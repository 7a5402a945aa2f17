#pragma once

#include <windows.h>
#include <unknwn.h>

#include <utility>

namespace brantel {

// Owns one reference to a COM object, or nothing.
template <typename Interface>
class ComPointer {
 public:
  ComPointer() = default;
  ComPointer(const ComPointer& other) noexcept : pointer_(other.pointer_) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  ComPointer(ComPointer&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPointer& operator=(ComPointer other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPointer() {
    if (pointer_ != nullptr) pointer_->Release();
  }

  // Adds a reference to those that others own.
  static ComPointer Share(Interface* pointer) noexcept {
    if (pointer != nullptr) pointer->AddRef();
    return Adopt(pointer);
  }

  // Takes over a reference that the caller owns.
  static ComPointer Adopt(Interface* pointer) noexcept {
    ComPointer adopted;
    adopted.pointer_ = pointer;
    return adopted;
  }

  [[nodiscard]] Interface* get() const noexcept { return pointer_; }
  Interface* operator->() const noexcept { return pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

  // For a callee that stores a new reference; what was held before is released.
  Interface** put() noexcept {
    *this = {};
    return &pointer_;
  }
  void** put_void() noexcept { return reinterpret_cast<void**>(put()); }

 private:
  Interface* pointer_ = nullptr;
};

}  // namespace brantel
