#pragma once

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace brantel {

// Owns a BSTR. Null is a valid value and means an empty text.
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(std::wstring_view text)
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
  }
  Bstr(Bstr&& other) noexcept : text_(other.release()) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  [[nodiscard]] BSTR get() const noexcept { return text_; }
  [[nodiscard]] std::wstring_view view() const noexcept { return ViewOf(text_); }

  // For a callee that replaces the text in place.
  BSTR* in_out() noexcept { return &text_; }

  BSTR release() noexcept { return std::exchange(text_, nullptr); }

  // All characters of a BSTR that someone else owns, also those behind a NUL.
  static std::wstring_view ViewOf(BSTR text) noexcept { return {text, SysStringLen(text)}; }

 private:
  BSTR text_ = nullptr;
};

}  // namespace brantel
