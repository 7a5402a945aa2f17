#include "host/commands/register_command.h"

#include <string>

#include "host/commands/command_context_win32.h"
#include "host/module/class_catalogue_win32.h"
#include "host/module/module_file_win32.h"
#include "host/module/module_library_win32.h"
#include "host/outcome/result_text.h"
#include "host/system/com_apartment_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

ExitCode Run(const RegisterCommand&, const CommandContext& context) {
  const std::wstring module_file = ModuleFile(context.module_file);
  const std::string names = ListClassNames(ReadClassCatalogue(module_file));
  const ComApartment apartment;
  const HRESULT result = ModuleLibrary(module_file).Register();
  if (FAILED(result)) {
    throw CommandFailure(ExitCode::kFailed,
                         ToUtf8(module_file) + " could not be registered: " + ResultText(result));
  }
  context.report.Entry("Registered " + ToUtf8(module_file) + "\nwith the classes " + names + ".\n",
                       {{"registered", ToUtf8(module_file)}});
  return ExitCode::kDone;
}

}  // namespace brantel::host
