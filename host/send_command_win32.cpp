#include "host/send_command_win32.h"

#include <windows.h>
#include <objbase.h>

#include <string>

#include "framework/bstr_win32.h"
#include "framework/com_pointer_win32.h"
#include "framework/notifier_contract.h"
#include "framework/utf8_text_win32.h"
#include "host/class_catalogue_win32.h"
#include "host/file_path_win32.h"
#include "host/host_callback_win32.h"
#include "host/module_library_win32.h"
#include "host/result_text.h"

namespace brantel::host {
namespace {

[[noreturn]] void ThrowNotCreated(const std::string& class_name, HRESULT result) {
  throw CommandFailure(ExitCode::kFailed,
                       "no " + class_name + " notifier could be created: " + ResultText(result));
}

ComPointer<INotifier> CreateFrom(const ModuleLibrary& module, const NotifierClass& notifier_class) {
  ComPointer<IClassFactory> factory;
  ComPointer<INotifier> notifier;
  HRESULT result = module.GetClassFactory(notifier_class.clsid, factory);
  if (SUCCEEDED(result)) {
    result = factory->CreateInstance(nullptr, IID_INotifier, notifier.put_void());
  }
  if (FAILED(result)) ThrowNotCreated(notifier_class.name, result);
  return notifier;
}

// The name as the module beside the host writes it. Without one the registry has the last word on
// which classes there are.
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

// Prints the alert's log and outcome.
ExitCode SendThrough(INotifier& notifier, const SendCommand& command, const OutputStream& output) {
  const auto callback =
      ComPointer<HostCallback>::Adopt(new HostCallback(command.event, command.variables, output));
  const HRESULT initialised = notifier.Initialize(callback.get());
  if (FAILED(initialised)) {
    throw CommandFailure(ExitCode::kFailed, command.class_name + " could not be initialised: " +
                                                ResultText(initialised));
  }
  const Bstr instance(FullPath(FromUtf8(command.instance_file)));
  const HRESULT sent = notifier.Send(instance.get());
  notifier.Shutdown();

  callback->FinishLog();
  if (FAILED(sent)) {
    output.Write("Failed: " + ResultText(sent) + "\n");
    return ExitCode::kFailed;
  }
  output.Write(sent == S_OK ? "Delivered.\n" : "Delivered: " + ResultText(sent) + "\n");
  return ExitCode::kDone;
}

}  // namespace

ExitCode Run(const SendCommand& command, const Invocation& invocation, const OutputStream& output) {
  if (!invocation.module_file) {
    const auto notifier = CreateRegistered(KnownClassName(command.class_name));
    return SendThrough(*notifier.get(), command, output);
  }
  const std::wstring module_file = FullPath(FromUtf8(*invocation.module_file));
  const auto classes = ReadClassCatalogue(module_file);
  const NotifierClass& notifier_class = FindClass(classes, command.class_name);
  // Outlives the notifier, which lives in it.
  const ModuleLibrary module(module_file);
  const auto notifier = CreateFrom(module, notifier_class);
  return SendThrough(*notifier.get(), command, output);
}

}  // namespace brantel::host
