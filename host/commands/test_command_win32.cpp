#include "host/commands/test_command.h"

#include <windows.h>

#include <array>

#include "host/commands/told_delivery_win32.h"
#include "host/commands/written_instance_win32.h"
#include "host/instances/instance_file_win32.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/unique_text_win32.h"

namespace brantel::host {
namespace {

std::wstring TemporaryPath() {
  std::array<wchar_t, MAX_PATH + 1> folder{};
  GetTempPathW(folder.size(), folder.data());
  return folder.data() + (L"notifyhost-" + UniqueText());
}

// An instance file that is there as long as the object.
class TemporaryInstance {
 public:
  explicit TemporaryInstance(std::string_view content) : path_(TemporaryPath()) {
    WriteInstanceFile(path_, content);
  }
  TemporaryInstance(const TemporaryInstance&) = delete;
  TemporaryInstance& operator=(const TemporaryInstance&) = delete;
  ~TemporaryInstance() { DeleteFileW(path_.c_str()); }

  [[nodiscard]] const std::wstring& path() const { return path_; }

 private:
  std::wstring path_;
};

}  // namespace

ExitCode Run(const TestCommand& command, const CommandContext& context) {
  const ClassDescription& notifier_class = FindDescription(command.class_name);
  const InstanceLayout& layout = notifier_class.instances;
  const Instance stored = MakeInstance(layout, command.values, ToCodePage);
  if (!command.is_unchecked) {
    CheckValues(notifier_class, stored, "Nothing is sent; --no-check sends it all the same",
                context);
  }
  const TemporaryInstance instance(EncodeInstance(layout, stored));
  const AlertToDeliver alert{.command = TestCommand::kSyntax.name,
                             .class_name = command.class_name,
                             .instance = "",
                             .path = instance.path(),
                             .file = ReadInstanceFile(instance.path()),
                             .folder = L"",
                             .module_file = context.module_file};
  return DeliverAndTell(alert, command.options, context);
}

}  // namespace brantel::host
