#include "tests/module/loaded_module.h"

#include <filesystem>

#include "tests/module/own_bits.h"
#include "tests/module/test_program.h"

namespace brantel {
namespace {

// Fills the pointer with the export of this name.
template <typename Function>
void Bind(HMODULE module, const char* name, Function& function) {
  const FARPROC found = GetProcAddress(module, name);
  if (found == nullptr) throw std::runtime_error(std::string("the module lacks ") + name);
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

std::wstring NearestReleasedModule() {
  for (std::filesystem::path folder = TestProgramFolder(); folder.has_relative_path();
       folder = folder.parent_path()) {
    const auto candidate = folder / L"out" / kSystemName / L"Brantel_Notifications.dll";
    if (std::filesystem::exists(candidate)) return candidate.wstring();
  }
  throw std::runtime_error("there is no module to test; BRANTEL_MODULE can name it");
}

}  // namespace

std::wstring ModuleFile() {
  const std::wstring named = EnvironmentText(L"BRANTEL_MODULE");
  if (named.empty()) return NearestReleasedModule();
  return std::filesystem::absolute(named).make_preferred().wstring();
}

LoadedModule::LoadedModule(const std::wstring& file) : handle_(LoadLibraryW(file.c_str())) {
  if (handle_ == nullptr) throw std::runtime_error("the module cannot be loaded");
  Bind(handle_, "DllCanUnloadNow", can_unload_now_);
  Bind(handle_, "DllGetClassObject", get_class_object_);
  Bind(handle_, "DllRegisterServer", register_server_);
  Bind(handle_, "DllUnregisterServer", unregister_server_);
}

LoadedModule::~LoadedModule() {
  FreeLibrary(handle_);
}

ComPointer<IClassFactory> LoadedModule::FactoryOf(const ExpectedClass& expected) const {
  ComPointer<IClassFactory> factory;
  if (FAILED(
          GetClassObject(ToGuid(expected.clsid), ToGuid(kClassFactoryIid), factory.put_void()))) {
    throw std::runtime_error("the module has no factory for this class");
  }
  return factory;
}

}  // namespace brantel
