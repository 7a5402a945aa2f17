#include "host/module/created_notifier_win32.h"

#include <windows.h>
#include <objbase.h>

#include <utility>

#include "host/module/class_catalogue_win32.h"
#include "host/module/module_file_win32.h"
#include "host/outcome/command_failure.h"
#include "host/outcome/result_text.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

[[noreturn]] void ThrowNotCreated(const std::string& class_name, HRESULT result) {
  throw CommandFailure(ExitCode::kFailed,
                       "no " + class_name + " notifier could be created: " + ResultText(result));
}

ComPointer<INotifier> CreateFrom(const ModuleLibrary& module, const ModuleClass& module_class) {
  ComPointer<IClassFactory> factory;
  ComPointer<INotifier> notifier;
  HRESULT result = module.GetClassFactory(module_class.clsid, factory);
  if (SUCCEEDED(result)) {
    result = factory->CreateInstance(nullptr, IID_INotifier, notifier.put_void());
  }
  if (FAILED(result)) ThrowNotCreated(module_class.name, result);
  return notifier;
}

// The name as the module beside the host writes it. Without such a module the registry alone
// decides which classes there are.
std::string KnownClassName(const std::string& class_name) {
  const std::wstring module_file = ModuleBesideHost();
  if (!FileExists(module_file)) return class_name;
  return FindClass(ReadClassCatalogue(module_file), class_name).name;
}

ComPointer<INotifier> CreateRegistered(const std::string& class_name) {
  const std::string prog_id = VersionIndependentProgId(class_name);
  CLSID clsid{};
  ComPointer<INotifier> notifier;
  HRESULT result = CLSIDFromProgID(FromUtf8(prog_id).c_str(), &clsid);
  if (SUCCEEDED(result)) {
    result =
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_INotifier, notifier.put_void());
  }
  if (result == CO_E_CLASSSTRING || result == REGDB_E_CLASSNOTREG) {
    throw CommandFailure(ExitCode::kFailed,
                         class_name + " is not registered as " + prog_id +
                             "; run notifyhost register, or name its module by --module");
  }
  if (FAILED(result)) ThrowNotCreated(class_name, result);
  return notifier;
}

}  // namespace

CreatedNotifier CreateNotifier(const std::string& class_name,
                               const std::optional<std::string>& module_file) {
  auto apartment = std::make_unique<const ComApartment>();
  if (!module_file) {
    return {std::move(apartment), nullptr, CreateRegistered(KnownClassName(class_name))};
  }
  const std::wstring path = ModuleFile(module_file);
  const auto classes = ReadClassCatalogue(path);
  const ModuleClass& module_class = FindClass(classes, class_name);
  auto module = std::make_unique<const ModuleLibrary>(path);
  auto notifier = CreateFrom(*module, module_class);
  return {std::move(apartment), std::move(module), std::move(notifier)};
}

}  // namespace brantel::host
