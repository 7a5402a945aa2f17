#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <utility>

#include "brantel/notifier_contract.h"
#include "module/class_table.h"
#include "module/module_lock.h"
#include "notifier/notifier.h"
#include "system/exception_guard.h"
#include "system/windows/com_pointer_win32.h"

namespace brantel {

// The COM object of every notifier class: identity, reference count, the bound host, and the
// conversions between the interfaces' types and the portable Notifier behind it.
class NotifierObject final : public INotifier,
                             public INotifierConfig,
                             public INotifierWebConfig,
                             public ISupportErrorInfo {
 public:
  // Starts with one reference, which the caller owns.
  explicit NotifierObject(const NotifierClass& notifier_class);
  NotifierObject(const NotifierObject&) = delete;
  NotifierObject& operator=(const NotifierObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE Initialize(IUnknown* host) noexcept override;
  HRESULT STDMETHODCALLTYPE Shutdown() noexcept override;
  HRESULT STDMETHODCALLTYPE Send(BSTR instance) noexcept override;

  HRESULT STDMETHODCALLTYPE AddInstance(BSTR directory, BSTR* name) noexcept override;
  HRESULT STDMETHODCALLTYPE EditInstance(BSTR directory, BSTR* name) noexcept override;
  HRESULT STDMETHODCALLTYPE GetImageResource(HMODULE* module, UINT32* id) noexcept override;

  HRESULT STDMETHODCALLTYPE GetAddPage(BSTR directory, BSTR* page) noexcept override;
  HRESULT STDMETHODCALLTYPE GetEditPage(BSTR instance, BSTR* page) noexcept override;
  HRESULT STDMETHODCALLTYPE SubmitForm(BSTR directory, BSTR form) noexcept override;

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) noexcept override;

 private:
  // By the last Release, which a host may let come without Shutdown.
  ~NotifierObject() { Unbind(); }

  // Runs a method that calls others: whatever they do, the object stays until the method is done,
  // and no exception goes out of it.
  template <typename Body>
  HRESULT Run(Body&& body) noexcept {
    const auto self = ComPointer<INotifier>::Share(this);
    return GuardExceptions(std::forward<Body>(body));
  }

  // The interface with this IID, not counted, or null where the class does not offer it.
  IUnknown* FindCustomInterface(REFIID iid) noexcept;
  IUnknown* FindInterface(REFIID iid) noexcept;

  void Unbind() noexcept;

  // The host, held for the time of one call, since the host may call Shutdown from its callbacks,
  // or from another thread. Null when none is bound.
  [[nodiscard]] std::shared_ptr<NotifierHost> BoundHost() const { return host_.load(); }

  // Shows the class's dialog, for the named instance or for a new one. The name under which the
  // operator saved it, or nothing.
  std::optional<std::string> ShowDialog(BSTR directory, std::optional<InstanceArgument> edited);

  const ModuleLock module_lock_;
  const NotifierClass& class_;
  volatile LONG references_ = 1;
  // Initialised while it is held.
  std::atomic<std::shared_ptr<NotifierHost>> host_;
  const std::unique_ptr<Notifier> notifier_;
  const std::unique_ptr<WebForms> web_forms_;  // null where the class offers none
};

}  // namespace brantel
