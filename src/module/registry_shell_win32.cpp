#include "module/registry_shell_win32.h"

#include <windows.h>
#include <shlwapi.h>

#include "system/windows/registry_key_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel {
namespace {

Result ToResult(LSTATUS status) {
  return HRESULT_FROM_WIN32(static_cast<unsigned long>(status));
}

Result ToResultOfDeletion(LSTATUS status) {
  return status == ERROR_FILE_NOT_FOUND ? kOk : ToResult(status);
}

}  // namespace

Result ClassesRoot::CreateKey(const std::string& path) {
  RegistryHandle key;
  return ToResult(RegCreateKeyExW(HKEY_CLASSES_ROOT, FromUtf8(path).c_str(), 0, nullptr,
                                  REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, key.put(), nullptr));
}

Result ClassesRoot::SetText(const std::string& path, const std::string& name,
                            const std::string& text) {
  RegistryHandle key;
  const LSTATUS opened =
      RegOpenKeyExW(HKEY_CLASSES_ROOT, FromUtf8(path).c_str(), 0, KEY_SET_VALUE, key.put());
  if (opened != ERROR_SUCCESS) return ToResult(opened);
  const std::wstring data = FromUtf8(text);
  return ToResult(RegSetValueExW(key.get(), FromUtf8(name).c_str(), 0, REG_SZ,
                                 reinterpret_cast<const BYTE*>(data.c_str()),
                                 static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t))));
}

Result ClassesRoot::DeleteTree(const std::string& path) {
  const DWORD status = SHDeleteKeyW(HKEY_CLASSES_ROOT, FromUtf8(path).c_str());
  return ToResultOfDeletion(static_cast<LSTATUS>(status));
}

Result ClassesRoot::DeleteIfWithoutSubkeys(const std::string& path) {
  const std::wstring wide_path = FromUtf8(path);
  RegistryHandle key;
  const LSTATUS opened =
      RegOpenKeyExW(HKEY_CLASSES_ROOT, wide_path.c_str(), 0, KEY_READ, key.put());
  if (opened != ERROR_SUCCESS) return ToResultOfDeletion(opened);
  DWORD subkeys = 0;
  const LSTATUS queried = RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &subkeys, nullptr,
                                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  if (queried != ERROR_SUCCESS) return ToResult(queried);
  if (subkeys != 0) return kOk;
  return ToResultOfDeletion(RegDeleteKeyW(HKEY_CLASSES_ROOT, wide_path.c_str()));
}

}  // namespace brantel
