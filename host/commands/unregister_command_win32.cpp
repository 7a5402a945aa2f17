#include "host/commands/unregister_command.h"

#include <string>
#include <vector>

#include "host/commands/command_context_win32.h"
#include "host/module/class_catalogue_win32.h"
#include "host/module/module_file_win32.h"
#include "host/module/module_library_win32.h"
#include "host/module/module_registration_win32.h"
#include "host/outcome/result_text.h"
#include "host/system/com_apartment_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// The files that are registered for hosts such as this one.
std::vector<std::wstring> RegisteredFiles() {
  std::vector<std::wstring> files;
  for (const RegisteredCopy& copy : RegisteredCopies()) {
    if (copy.host_bits == kOwnBits) files.push_back(copy.file);
  }
  return files;
}

// Those of the files that are no copy of this module's file.
std::vector<std::string> OtherThan(const std::wstring& module_file,
                                   const std::vector<std::wstring>& files) {
  std::vector<std::string> others;
  for (const std::wstring& file : files) {
    if (!IsSameFile(file, module_file)) others.push_back(ToUtf8(file));
  }
  return others;
}

void CheckResult(HRESULT result, const std::wstring& module_file) {
  if (SUCCEEDED(result)) return;
  throw CommandFailure(ExitCode::kFailed,
                       ToUtf8(module_file) + " could not be unregistered: " + ResultText(result));
}

void Unregister(const std::wstring& module_file, bool is_of_another_copy) {
  const ComApartment apartment;
  const ModuleLibrary module(module_file);
  // A type library can be taken out only while its file is there, and that of another copy may be
  // gone. So this copy takes its place first.
  if (is_of_another_copy) CheckResult(module.Register(), module_file);
  CheckResult(module.Unregister(), module_file);
}

}  // namespace

ExitCode Run(const UnregisterCommand& command, const CommandContext& context) {
  const std::wstring module_file = ModuleFile(context.module_file);
  const std::string names = ListClassNames(ReadClassCatalogue(module_file));
  const auto registered = RegisteredFiles();
  const auto others = OtherThan(module_file, registered);
  if (!command.takes_any_copy) {
    if (registered.empty()) {
      context.report.Prose("Nothing is registered.\n");
      return ExitCode::kNothingMatched;
    }
    if (!others.empty()) {
      throw CommandFailure(ExitCode::kFailed, "another copy is registered, " + others.front() +
                                                  "; --force takes that out, too");
    }
  }
  Unregister(module_file, !others.empty());
  std::string words = "Unregistered " + ToUtf8(module_file) + "\nwith the classes " + names + ".\n";
  for (const std::string& other : others)
    words += "The registration was that of " + other + ".\n";
  context.report.Entry(words, {{"unregistered", ToUtf8(module_file)}, {"others", others}});
  return ExitCode::kDone;
}

}  // namespace brantel::host
