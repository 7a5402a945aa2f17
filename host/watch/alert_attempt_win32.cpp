#include "host/watch/alert_attempt_win32.h"

#include <exception>
#include <string_view>

#include "host/delivery/delivery_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/settings/line_setup.h"
#include "module/class_descriptions.h"
#include "system/registry_settings_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// Of the classes the one that a person answers.
constexpr std::string_view kAnsweredClass = "Voice";

// The watch tells of ends alone.
class NoListener final : public DeliveryListener {
 public:
  void OnLog(std::string_view, ElapsedTime) override {}
  void OnPhase(std::string_view, ElapsedTime) override {}
  void OnWarning(std::string_view) override {}
};

std::wstring PathOf(const std::wstring& folder, const std::string& instance) {
  return folder + L"\\" + FromUtf8(instance);
}

AttemptResult ResultOf(const std::string& class_name, const DeliveryEnd& end) {
  const std::string words = end.summary.Sentence();
  if (end.summary.verdict.delivered)
    return {AlertEnd::kDelivered, class_name == kAnsweredClass, words};
  // Where Send gave no answer, it may have done what it was doing.
  const bool is_known = end.fault || !end.summary.result.empty();
  return {is_known ? AlertEnd::kFailed : AlertEnd::kUncertain, false, words};
}

AttemptResult Attempt(const AlertRoute& route, const AttemptOrder& order, HANDLE stop) {
  const Decision& decision = order.decision;
  AlertToDeliver alert;
  alert.command = "watch";
  alert.path = PathOf(route.instances, decision.instance);
  alert.folder = route.instances;
  alert.module_file = route.module_file;
  alert.decision = route.plan + "#" + std::to_string(decision.id);
  alert.instance = ToUtf8(alert.path);
  alert.file = ReadInstanceFile(alert.path);
  if (alert.file.layout == nullptr)
    return {AlertEnd::kFailed, false, alert.instance + " " + alert.file.fault};
  alert.class_name = alert.file.layout->class_name;
  DeliveryOptions options{.event = decision.event, .time_limit = order.time_limit};
  for (const std::string& variable : decision.variables)
    options.variables.Assign(variable);
  NoListener nobody;
  return ResultOf(alert.class_name, Deliver(alert, options, stop, nobody));
}

}  // namespace

std::vector<std::string> ResourcesOf(const std::wstring& folder, const std::string& instance) {
  const InstanceFile file = ReadInstanceFile(PathOf(folder, instance));
  if (file.layout == nullptr) return {instance};
  const ClassDescription& notifier_class = *FindClassDescription(file.layout->class_name);
  std::vector<std::string> resources = {std::string(file.layout->class_name)};
  if (!notifier_class.profile_field || !file.stored) return resources;
  const LineSetup line =
      SetupOfLine(notifier_class, ReadProfileOf(registry_settings, notifier_class, *file.stored));
  resources.push_back("COM" + std::to_string(line.port));
  return resources;
}

AttemptResult AttemptAlert(const AlertRoute& route, const AttemptOrder& order, HANDLE stop) {
  try {
    return Attempt(route, order, stop);
  } catch (const std::exception& error) {
    return {AlertEnd::kFailed, false, error.what()};
  }
}

}  // namespace brantel::host
