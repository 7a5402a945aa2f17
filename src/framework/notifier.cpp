#include "framework/notifier.h"

#include "framework/string_table.h"

namespace brantel {

std::optional<Instance> LoadInstanceForAlert(InstanceFiles& files, const InstanceLayout& layout,
                                             const InstanceArgument& argument, NotifierHost* host) {
  std::optional<Instance> instance;
  if (const auto file = files.Read(argument.path)) instance = DecodeInstance(layout, *file);
  if (!instance && host != nullptr) {
    host->LogMessage(argument.text);
    host->LogMessage(LoadText(text_id::kLoadFailed));
    host->LogMessage(layout.load_failure_end);
  }
  return instance;
}

}  // namespace brantel
