#include "system/windows/system_library_win32.h"

#include <string>

namespace brantel {
namespace {

std::wstring SystemDirectory() {
  std::wstring directory(MAX_PATH, L'\0');
  const UINT length = GetSystemDirectoryW(directory.data(), static_cast<UINT>(directory.size()));
  directory.resize(length <= directory.size() ? length : 0);
  return directory;
}

}  // namespace

HMODULE LoadSystemLibrary(std::string_view name) {
  const std::wstring directory = SystemDirectory();
  if (directory.empty()) return nullptr;
  const std::wstring path = directory + L'\\' + std::wstring(name.begin(), name.end());
  return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

SystemLibrary::SystemLibrary(std::string_view name) : module_(LoadSystemLibrary(name)) {}

}  // namespace brantel
