#include "module/registration_win32.h"

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <string_view>

#include "brantel/notifier_contract.h"
#include "module/class_table.h"
#include "module/registry_script.h"
#include "module/registry_shell_win32.h"
#include "system/windows/com_pointer_win32.h"
#include "system/windows/module_instance_win32.h"
#include "system/windows/registry_key_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel {
namespace {

constexpr WORD kTypeLibraryMajor = 1;
constexpr WORD kTypeLibraryMinor = 0;
constexpr LCID kTypeLibraryLocale = 0;

// Programs of both kinds share the key of a type library, in which each kind has one of its own.
constexpr bool kIs64Bit = sizeof(void*) == 8;
constexpr SYSKIND kTypeLibrarySystem = kIs64Bit ? SYS_WIN64 : SYS_WIN32;
constexpr const wchar_t* kTypeLibraryKey = kIs64Bit ? L"\\1.0\\0\\win64" : L"\\1.0\\0\\win32";

// The longest path that the system gives a module.
constexpr std::size_t kPathCapacity = 32768;

std::wstring ModulePath() {
  std::wstring path(kPathCapacity, L'\0');
  const DWORD length = GetModuleFileNameW(ModuleInstance(), path.data(), kPathCapacity);
  path.resize(length);
  return path;
}

std::string_view ScriptResource(unsigned id) {
  HRSRC found = FindResourceW(ModuleInstance(), MAKEINTRESOURCEW(id), L"REGISTRY");
  if (found == nullptr) return {};
  HGLOBAL loaded = LoadResource(ModuleInstance(), found);
  if (loaded == nullptr) return {};
  return {static_cast<const char*>(LockResource(loaded)), SizeofResource(ModuleInstance(), found)};
}

// Runs one class's script by `run`, RegisterScript or UnregisterScript.
Result RunScript(const NotifierClass& notifier_class,
                 Result (*run)(const RegistryScript&, RegistryShell&)) {
  const std::string_view text = ScriptResource(notifier_class.description.registry_script_id);
  const ScriptParse parse = ParseRegistryScript(text, ToUtf8(ModulePath()));
  if (text.empty() || !parse.script) return kFail;
  ClassesRoot classes_root;
  return run(*parse.script, classes_root);
}

Result RegisterOwnTypeLibrary() {
  std::wstring path = ModulePath();
  ComPointer<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put());
  if (FAILED(loaded)) return loaded;
  return RegisterTypeLib(library.get(), path.data(), nullptr);
}

bool IsTypeLibraryRegistered() {
  std::wstring libid(39, L'\0');
  StringFromGUID2(LIBID_BRANTEL_NOTIFICATIONSLib, libid.data(), 39);
  libid.pop_back();
  RegistryHandle key;
  const std::wstring path = L"TypeLib\\" + libid + kTypeLibraryKey;
  return RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, key.put()) == ERROR_SUCCESS;
}

Result UnregisterOwnTypeLibrary() {
  if (!IsTypeLibraryRegistered()) return kOk;
  return UnRegisterTypeLib(LIBID_BRANTEL_NOTIFICATIONSLib, kTypeLibraryMajor, kTypeLibraryMinor,
                           kTypeLibraryLocale, kTypeLibrarySystem);
}

}  // namespace

Result RegisterModule() {
  for (const NotifierClass& notifier_class : NotifierClasses()) {
    const Result result = RunScript(notifier_class, RegisterScript);
    if (Failed(result)) return result;
  }
  return RegisterOwnTypeLibrary();
}

Result UnregisterModule() {
  Result first_failure = kOk;
  const auto note = [&](Result result) {
    if (Failed(result) && !Failed(first_failure)) first_failure = result;
  };
  for (const NotifierClass& notifier_class : NotifierClasses()) {
    note(RunScript(notifier_class, UnregisterScript));
  }
  note(UnregisterOwnTypeLibrary());
  return first_failure;
}

}  // namespace brantel
