#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "framework/guid.h"
#include "framework/instance_dialog.h"
#include "framework/notifier.h"
#include "framework/web_form_spec.h"
#include "framework/web_forms.h"

namespace brantel {

// What a notifier class is.
struct NotifierClass {
  std::string_view name;
  Guid clsid;
  unsigned registry_script_id;
  unsigned icon_id;
  const WebFormSpec* web_form;  // null: the class offers no INotifierWebConfig
  std::unique_ptr<Notifier> (*make_notifier)();
  // The view must outlive the dialog.
  std::unique_ptr<InstanceDialog> (*make_dialog)(DialogView& view, InstanceDialogCall call);
};

// The seven classes, in their order.
std::span<const NotifierClass> NotifierClasses();

// The web side of a new object of the class; null where the class has none.
std::unique_ptr<WebForms> MakeWebForms(const NotifierClass& notifier_class);

}  // namespace brantel
