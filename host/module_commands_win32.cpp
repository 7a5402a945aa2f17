#include "host/module_commands_win32.h"

#include <windows.h>

#include <string>
#include <vector>

#include "framework/utf8_text_win32.h"
#include "host/class_catalogue_win32.h"
#include "host/file_path_win32.h"
#include "host/module_library_win32.h"
#include "host/result_text.h"
#include "host/text_table.h"

namespace brantel::host {
namespace {

std::wstring ModuleFileOf(const Invocation& invocation) {
  return invocation.module_file ? FullPath(FromUtf8(*invocation.module_file)) : ModuleBesideHost();
}

bool SameFile(const std::wstring& left, const std::wstring& right) {
  return lstrcmpiW(left.c_str(), right.c_str()) == 0;
}

// Whether the class is registered, seen from this module file.
std::string RegistrationText(const NotifierClass& notifier_class, const std::wstring& module_file) {
  const auto registered = RegisteredModule(notifier_class.clsid);
  if (!registered) return "no";
  return SameFile(*registered, module_file) ? "yes" : "as " + ToUtf8(*registered);
}

void CheckResult(HRESULT result, const std::string& what) {
  if (FAILED(result)) throw CommandFailure(ExitCode::kFailed, what + ": " + ResultText(result));
}

}  // namespace

ExitCode Run(const ClassesCommand&, const Invocation& invocation, const OutputStream& output) {
  const std::wstring module_file = ModuleFileOf(invocation);
  std::vector<std::vector<std::string>> rows = {
      {"Class", "ProgID", "CLSID", "Description", "Registered"}};
  for (const NotifierClass& notifier_class : ReadClassCatalogue(module_file)) {
    rows.push_back({notifier_class.name, ProgId(notifier_class), GuidText(notifier_class.clsid),
                    notifier_class.description, RegistrationText(notifier_class, module_file)});
  }
  output.Write("Classes of " + ToUtf8(module_file) + "\n\n" + FormatTextTable(rows));
  return ExitCode::kDone;
}

ExitCode Run(const RegisterCommand&, const Invocation& invocation, const OutputStream& output) {
  const std::wstring module_file = ModuleFileOf(invocation);
  const std::string names = ListClassNames(ReadClassCatalogue(module_file));
  CheckResult(ModuleLibrary(module_file).Register(),
              ToUtf8(module_file) + " could not be registered");
  output.Write("Registered " + ToUtf8(module_file) + "\nwith the classes " + names + ".\n");
  return ExitCode::kDone;
}

ExitCode Run(const UnregisterCommand&, const Invocation& invocation, const OutputStream& output) {
  const std::wstring module_file = ModuleFileOf(invocation);
  const std::string names = ListClassNames(ReadClassCatalogue(module_file));
  CheckResult(ModuleLibrary(module_file).Unregister(),
              ToUtf8(module_file) + " could not be unregistered");
  output.Write("Unregistered " + ToUtf8(module_file) + "\nwith the classes " + names + ".\n");
  return ExitCode::kDone;
}

}  // namespace brantel::host
