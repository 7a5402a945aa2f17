#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "framework/guid.h"
#include "framework/notifier.h"

namespace brantel {

// What a notifier class is.
struct NotifierClass {
  std::string_view name;
  Guid clsid;
  unsigned registry_script_id;
  unsigned icon_id;
  bool has_web_forms;
  std::unique_ptr<Notifier> (*make_notifier)();
};

// The seven classes, in their order.
std::span<const NotifierClass> NotifierClasses();

}  // namespace brantel
