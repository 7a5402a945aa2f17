#include "framework/notifier.h"

#include "framework/string_table.h"

namespace brantel {
namespace {

template <typename Text>
void LogLines(NotifierHost* host, const InstanceLayout& layout, Text which) {
  if (host == nullptr) return;
  host->LogMessage(which);
  host->LogMessage(LoadText(text_id::kLoadFailed));
  host->LogMessage(layout.load_failure_end);
}

}  // namespace

void LogFailedLoad(NotifierHost* host, const InstanceLayout& layout, std::string_view which) {
  LogLines(host, layout, which);
}

void LogFailedLoad(NotifierHost* host, const InstanceLayout& layout, std::u16string_view which) {
  LogLines(host, layout, which);
}

std::optional<Instance> LoadInstanceForAlert(InstanceFiles& files, const InstanceLayout& layout,
                                             const InstanceArgument& argument, NotifierHost* host) {
  std::optional<Instance> instance;
  if (const auto file = files.Read(argument.path)) instance = DecodeInstance(layout, *file);
  if (!instance) LogFailedLoad(host, layout, argument.text);
  return instance;
}

}  // namespace brantel
