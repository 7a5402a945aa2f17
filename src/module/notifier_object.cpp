#include "module/notifier_object.h"

#include "dialog/dialog_window_win32.h"
#include "module/com_host.h"
#include "notifier/alert_guard.h"
#include "system/windows/ansi_text_win32.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/module_instance_win32.h"

namespace brantel {
namespace {

// The count of an object that is being destroyed. The host that it lets go may still add and
// release references meanwhile, and none of these is the last one once more.
constexpr LONG kBeingDestroyed = 0x40000000;

InstanceArgument ToInstanceArgument(BSTR instance) {
  const std::wstring_view text = Bstr::ViewOf(instance);
  return {std::u16string(text.begin(), text.end()), ToAnsiPath(text)};
}

// Looked for in the wide text: in ANSI the second byte of a double-byte character may be what a
// backslash is.
std::string FileNameOf(BSTR instance) {
  const std::wstring_view text = Bstr::ViewOf(instance);
  const std::wstring_view path = text.substr(0, text.find(L'\0'));
  return ToAnsiPath(path.substr(path.rfind(L'\\') + 1));
}

void StorePage(const HtmlText& page, BSTR* out) {
  *out = Bstr(FromAnsi(page.view())).release();
}

// The callbacks of a host, or null when it offers none.
std::shared_ptr<NotifierHost> QueryHost(IUnknown* host) {
  if (host == nullptr) return nullptr;
  void* callback = nullptr;
  // A pointer that comes with a failure is no reference of ours, whatever it holds.
  if (FAILED(host->QueryInterface(IID_INotifierHost, &callback)) || callback == nullptr) {
    return nullptr;
  }
  return std::make_shared<ComHost>(
      ComPointer<INotifierHost>::Adopt(static_cast<INotifierHost*>(callback)));
}

}  // namespace

NotifierObject::NotifierObject(const NotifierClass& notifier_class)
    : class_(notifier_class),
      notifier_(notifier_class.make_notifier()),
      web_forms_(MakeWebForms(notifier_class)) {}

HRESULT NotifierObject::QueryInterface(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = FindInterface(iid);
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG NotifierObject::AddRef() noexcept {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG NotifierObject::Release() noexcept {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) {
    references_ = kBeingDestroyed;
    delete this;
  }
  return static_cast<ULONG>(left);
}

IUnknown* NotifierObject::FindCustomInterface(REFIID iid) noexcept {
  if (iid == IID_INotifier) return static_cast<INotifier*>(this);
  if (iid == IID_INotifierConfig) return static_cast<INotifierConfig*>(this);
  if (web_forms_ && iid == IID_INotifierWebConfig) {
    return static_cast<INotifierWebConfig*>(this);
  }
  return nullptr;
}

IUnknown* NotifierObject::FindInterface(REFIID iid) noexcept {
  if (iid == IID_IUnknown) return static_cast<INotifier*>(this);
  if (iid == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
  return FindCustomInterface(iid);
}

HRESULT NotifierObject::InterfaceSupportsErrorInfo(REFIID iid) noexcept {
  return FindCustomInterface(iid) != nullptr ? S_OK : S_FALSE;
}

HRESULT NotifierObject::Initialize(IUnknown* host) noexcept {
  return Run([&]() -> Result {
    if (BoundHost()) return kOk;
    auto bound = notifier_->Initialize([host] { return QueryHost(host); });
    if (!bound) return kFail;
    // A host that is asked for its callbacks may bind itself from within.
    std::shared_ptr<NotifierHost> none;
    if (!host_.compare_exchange_strong(none, std::move(bound))) notifier_->Shutdown();
    return kOk;
  });
}

HRESULT NotifierObject::Shutdown() noexcept {
  return Run([&] {
    Unbind();
    return kOk;
  });
}

void NotifierObject::Unbind() noexcept {
  if (host_.exchange(nullptr)) notifier_->Shutdown();
}

HRESULT NotifierObject::Send(BSTR instance) noexcept {
  return Run([&] {
    const auto host = BoundHost();
    return GuardAlert(host.get(),
                      [&] { return notifier_->Send(ToInstanceArgument(instance), host.get()); });
  });
}

HRESULT NotifierObject::GetImageResource(HMODULE* module, UINT32* id) noexcept {
  if (module == nullptr || id == nullptr) return E_POINTER;
  *module = ModuleInstance();
  *id = class_.description.icon_id;
  return S_OK;
}

std::optional<std::string> NotifierObject::ShowDialog(BSTR directory,
                                                      std::optional<InstanceArgument> edited) {
  const std::shared_ptr<NotifierHost> host = BoundHost();
  DialogWindow window;
  const auto dialog = class_.make_dialog(
      window, {ToAnsiPath(Bstr::ViewOf(directory)), std::move(edited), host.get()});
  if (Failed(window.Run(*dialog, GetActiveWindow()))) return std::nullopt;
  return dialog->saved_name();
}

HRESULT NotifierObject::AddInstance(BSTR directory, BSTR* name) noexcept {
  if (name == nullptr) return E_POINTER;
  return Run([&]() -> Result {
    const auto saved = ShowDialog(directory, std::nullopt);
    if (!saved) return E_FAIL;
    *name = Bstr(FromAnsi(*saved)).release();
    return S_OK;
  });
}

HRESULT NotifierObject::EditInstance(BSTR directory, BSTR* name) noexcept {
  if (name == nullptr) return E_POINTER;
  return Run([&]() -> Result {
    const auto saved = ShowDialog(directory, ToInstanceArgument(*name));
    if (!saved) return E_FAIL;
    Bstr replacement(FromAnsi(*saved));
    SysFreeString(std::exchange(*name, replacement.release()));
    return S_OK;
  });
}

HRESULT NotifierObject::GetAddPage(BSTR directory, BSTR* page) noexcept {
  if (page == nullptr) return E_POINTER;
  return Run([&]() -> Result {
    StorePage(web_forms_->AddPage(ToAnsiPath(Bstr::ViewOf(directory)), BoundHost().get()), page);
    return kOk;
  });
}

HRESULT NotifierObject::GetEditPage(BSTR instance, BSTR* page) noexcept {
  if (page == nullptr) return E_POINTER;
  return Run([&]() -> Result {
    const auto built =
        web_forms_->EditPage(ToInstanceArgument(instance), FileNameOf(instance), BoundHost().get());
    if (!built) return kFail;
    StorePage(*built, page);
    return kOk;
  });
}

HRESULT NotifierObject::SubmitForm(BSTR directory, BSTR form) noexcept {
  return Run([&] {
    // Forms name files too, so they are converted as paths are.
    return web_forms_->SubmitForm(ToAnsiPath(Bstr::ViewOf(directory)),
                                  ToAnsiPath(Bstr::ViewOf(form)));
  });
}

}  // namespace brantel
