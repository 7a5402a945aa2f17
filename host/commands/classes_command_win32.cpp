#include "host/commands/classes_command.h"

#include <array>
#include <string>
#include <vector>

#include "host/commands/command_context_win32.h"
#include "host/module/class_catalogue_win32.h"
#include "host/module/module_file_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::array kClassColumns = {
    Column{"class", "Class"}, Column{"progid", "ProgID"}, Column{"clsid", "CLSID"},
    Column{"description", "Description"}, Column{"registered", "Registered"}};

// Whether the class is registered, seen from this module file.
std::string RegistrationText(const ModuleClass& module_class, const std::wstring& module_file) {
  const auto registered = RegisteredModule(module_class.clsid);
  if (!registered) return "no";
  return IsSameFile(*registered, module_file) ? "yes" : "as " + ToUtf8(*registered);
}

}  // namespace

ExitCode Run(const ClassesCommand&, const CommandContext& context) {
  const std::wstring module_file = ModuleFile(context.module_file);
  std::vector<Record> records;
  for (const ModuleClass& module_class : ReadClassCatalogue(module_file)) {
    records.push_back({{"class", module_class.name},
                       {"progid", ProgId(module_class)},
                       {"clsid", GuidText(module_class.clsid)},
                       {"description", module_class.description},
                       {"registered", RegistrationText(module_class, module_file)}});
  }
  context.report.Prose("Classes of " + ToUtf8(module_file) + "\n\n");
  context.report.Table(kClassColumns, records);
  return ExitCode::kDone;
}

}  // namespace brantel::host
