#pragma once

#include <memory>
#include <span>

#include "description/class_description.h"
#include "dialog/instance_dialog.h"
#include "notifier/notifier.h"
#include "web/web_forms.h"

namespace brantel {

// A notifier class, and how its parts are made. A class NAME in a folder of its own defines
//
//   std::unique_ptr<Notifier> MakeNAME();
//   std::unique_ptr<InstanceDialog> MakeNAMEDialog(DialogView& view, InstanceDialogCall call);
//
// of which the view must outlive the dialog.
struct NotifierClass {
  const ClassDescription& description;
  std::unique_ptr<Notifier> (*make_notifier)();
  std::unique_ptr<InstanceDialog> (*make_dialog)(DialogView& view, InstanceDialogCall call);
};

// All classes, in their order.
std::span<const NotifierClass> NotifierClasses();

// How many classes there are.
#define NOTIFIER_CLASS(name, folder) +1
inline constexpr std::size_t kNotifierClassCount = 0
#include "module/notifier_classes.def"
    ;
#undef NOTIFIER_CLASS

// The web side of a new object of the class; null where the class has none.
std::unique_ptr<WebForms> MakeWebForms(const NotifierClass& notifier_class);

}  // namespace brantel
