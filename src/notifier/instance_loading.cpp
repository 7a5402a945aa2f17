#include "notifier/instance_loading.h"

#include "instance/instance_directory.h"
#include "text/string_table.h"

namespace brantel {
namespace {

void LogReason(const AlertLog& log, const InstanceLayout& layout) {
  log.Line(text_id::kLoadFailed);
  log.Text(layout.load_failure_end);
}

}  // namespace

void LogFailedLoad(const AlertLog& log, const InstanceLayout& layout, std::u16string_view which) {
  log.Text(which);
  LogReason(log, layout);
}

void LogFailedDefaultLoad(const AlertLog& log, const InstanceLayout& layout) {
  log.Line(layout.default_name_id);
  LogReason(log, layout);
}

std::optional<Instance> LoadInstanceForAlert(InstanceFiles& files, const InstanceLayout& layout,
                                             const InstanceArgument& argument, NotifierHost* host) {
  auto instance = TryLoadInstance(files, layout, argument.path);
  if (!instance) LogFailedLoad(AlertLog(host), layout, argument.text);
  return instance;
}

}  // namespace brantel
