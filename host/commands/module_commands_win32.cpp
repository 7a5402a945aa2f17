#include "host/commands/module_commands.h"

#include <windows.h>

#include <string>
#include <vector>

#include "host/commands/command_context_win32.h"
#include "host/module/class_catalogue_win32.h"
#include "host/module/module_file_win32.h"
#include "host/module/module_library_win32.h"
#include "host/outcome/command_failure.h"
#include "host/outcome/result_text.h"
#include "host/text/text_table.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

bool SameFile(const std::wstring& left, const std::wstring& right) {
  return lstrcmpiW(left.c_str(), right.c_str()) == 0;
}

// Whether the class is registered, seen from this module file.
std::string RegistrationText(const ModuleClass& module_class, const std::wstring& module_file) {
  const auto registered = RegisteredModule(module_class.clsid);
  if (!registered) return "no";
  return SameFile(*registered, module_file) ? "yes" : "as " + ToUtf8(*registered);
}

void CheckResult(HRESULT result, const std::string& what) {
  if (FAILED(result)) throw CommandFailure(ExitCode::kFailed, what + ": " + ResultText(result));
}

}  // namespace

ExitCode Run(const ClassesCommand&, const CommandContext& context) {
  const std::wstring module_file = ModuleFile(context.module_file);
  std::vector<std::vector<std::string>> rows = {
      {"Class", "ProgID", "CLSID", "Description", "Registered"}};
  for (const ModuleClass& module_class : ReadClassCatalogue(module_file)) {
    rows.push_back({module_class.name, ProgId(module_class), GuidText(module_class.clsid),
                    module_class.description, RegistrationText(module_class, module_file)});
  }
  context.output.Write("Classes of " + ToUtf8(module_file) + "\n\n" + FormatTextTable(rows));
  return ExitCode::kDone;
}

ExitCode Run(const RegisterCommand&, const CommandContext& context) {
  const std::wstring module_file = ModuleFile(context.module_file);
  const std::string names = ListClassNames(ReadClassCatalogue(module_file));
  CheckResult(ModuleLibrary(module_file).Register(),
              ToUtf8(module_file) + " could not be registered");
  context.output.Write("Registered " + ToUtf8(module_file) + "\nwith the classes " + names + ".\n");
  return ExitCode::kDone;
}

ExitCode Run(const UnregisterCommand&, const CommandContext& context) {
  const std::wstring module_file = ModuleFile(context.module_file);
  const std::string names = ListClassNames(ReadClassCatalogue(module_file));
  CheckResult(ModuleLibrary(module_file).Unregister(),
              ToUtf8(module_file) + " could not be unregistered");
  context.output.Write("Unregistered " + ToUtf8(module_file) + "\nwith the classes " + names +
                       ".\n");
  return ExitCode::kDone;
}

}  // namespace brantel::host
