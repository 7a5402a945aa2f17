#include "module/class_table.h"

#include <array>

#include "instance/instance_files_win32.h"
#include "system/windows/code_page_win32.h"

namespace brantel {

#define NOTIFIER_CLASS(name, folder)      \
  extern const ClassDescription k##name;  \
  std::unique_ptr<Notifier> Make##name(); \
  std::unique_ptr<InstanceDialog> Make##name##Dialog(DialogView& view, InstanceDialogCall call);
#include "module/notifier_classes.def"
#undef NOTIFIER_CLASS

namespace {

#define NOTIFIER_CLASS(name, folder) NotifierClass{k##name, Make##name, Make##name##Dialog},
constexpr std::array kClasses = {
#include "module/notifier_classes.def"
};
#undef NOTIFIER_CLASS

}  // namespace

std::span<const NotifierClass> NotifierClasses() {
  return kClasses;
}

std::unique_ptr<WebForms> MakeWebForms(const NotifierClass& notifier_class) {
  if (!notifier_class.description.web_form) return nullptr;
  return std::make_unique<WebForms>(disk_instance_files, notifier_class.description,
                                    system_code_page);
}

}  // namespace brantel
