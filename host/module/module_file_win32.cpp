#include "host/module/module_file_win32.h"

#include <windows.h>

#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr const wchar_t* kModuleFile = L"Brantel_Notifications.dll";

}  // namespace

std::wstring ModuleBesideHost() {
  std::wstring path(kPathCapacity, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), kPathCapacity));
  path.resize(path.rfind(L'\\') + 1);
  return path + kModuleFile;
}

std::wstring ModuleFile(const std::optional<std::string>& given) {
  return given ? FullPath(FromUtf8(*given)) : ModuleBesideHost();
}

}  // namespace brantel::host
