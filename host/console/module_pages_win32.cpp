#include "host/console/module_pages_win32.h"

#include "brantel/notifier_contract.h"
#include "host/module/created_notifier_win32.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/com_pointer_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// One object of a class, by its web side.
class WebNotifier {
 public:
  WebNotifier(const ClassDescription& notifier_class, const std::optional<std::string>& module_file)
      : created_(CreateNotifier(std::string(notifier_class.instances.class_name), module_file)) {
    created_.notifier->QueryInterface(IID_INotifierWebConfig, forms_.put_void());
  }

  std::optional<std::string> AddPage(const std::string& directory) {
    return PageBy(&INotifierWebConfig::GetAddPage, directory);
  }
  std::optional<std::string> EditPage(const std::string& path) {
    return PageBy(&INotifierWebConfig::GetEditPage, path);
  }
  bool SubmitForm(const std::string& directory, const std::string& form) {
    const Bstr folder(FromUtf8(directory));
    const Bstr posted(FromUtf8(form));
    return forms_ && SUCCEEDED(forms_->SubmitForm(folder.get(), posted.get()));
  }

 private:
  using PageMethod = HRESULT (STDMETHODCALLTYPE INotifierWebConfig::*)(BSTR path, BSTR* page);

  std::optional<std::string> PageBy(PageMethod method, const std::string& path) {
    const Bstr given(FromUtf8(path));
    Bstr page;
    if (!forms_ || FAILED((forms_.get()->*method)(given.get(), page.in_out()))) return std::nullopt;
    return ToUtf8(page.view());
  }

  CreatedNotifier created_;
  ComPointer<INotifierWebConfig> forms_;  // before the module that it lives in
};

}  // namespace

std::optional<std::string> ModulePages::AddPage(const ClassDescription& notifier_class) const {
  return WebNotifier(notifier_class, module_file_).AddPage(directory_);
}

std::optional<std::string> ModulePages::EditPage(const ClassDescription& notifier_class,
                                                 const std::string& name) const {
  return WebNotifier(notifier_class, module_file_).EditPage(PathOf(name));
}

bool ModulePages::SubmitForm(const ClassDescription& notifier_class,
                             const std::optional<std::string>& edited,
                             const std::string& form) const {
  WebNotifier notifier(notifier_class, module_file_);
  const auto shown = edited ? notifier.EditPage(PathOf(*edited)) : notifier.AddPage(directory_);
  return shown && notifier.SubmitForm(directory_, form);
}

}  // namespace brantel::host
