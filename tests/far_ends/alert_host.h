#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "brantel/notifier_contract.h"

namespace brantel {

// A host with one event to tell of, an item that went down. It may misbehave in any of its
// callbacks. It lives where it is declared: the count of references starts with the one that the
// test itself holds. For one thread but for its count.
class AlertHost final : public INotifierHost {
 public:
  // The alert that is on its way.
  struct Alert {
    // What takes the place of "%n" and of "%C".
    std::wstring name;
    std::wstring event;
    // Callbacks so far, and how the last line of the log begins.
    std::size_t callbacks = 0;
    std::wstring last_line{};
  };
  Alert alert;

  // Runs in each callback, before that does anything, with the callback's number from 0.
  std::function<void(std::size_t)> at_callback;
  // The callback that fails.
  std::optional<std::size_t> fails_at;
  // What ExpandMessage does with its text instead of filling it in.
  std::function<HRESULT(BSTR*)> expansion;

  static constexpr HRESULT kFailure = static_cast<HRESULT>(0x80131234);

  AlertHost() = default;
  AlertHost(const AlertHost&) = delete;
  AlertHost& operator=(const AlertHost&) = delete;
  ~AlertHost() = default;

  [[nodiscard]] LONG references() const { return references_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references_); }
  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) override;
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32 level, BSTR text) override;
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) override;

 private:
  // Whether this callback fails.
  bool Begin();

  std::atomic<LONG> references_ = 1;
};

}  // namespace brantel
