#include "host/file_path_win32.h"

#include <windows.h>

namespace brantel::host {
namespace {

// The longest path that the system handles, with its NUL.
constexpr DWORD kPathCapacity = 32768;

constexpr const wchar_t* kModuleFile = L"Brantel_Notifications.dll";

}  // namespace

std::wstring FullPath(const std::wstring& file) {
  std::wstring path(kPathCapacity, L'\0');
  const DWORD length = GetFullPathNameW(file.c_str(), kPathCapacity, path.data(), nullptr);
  if (length == 0 || length >= kPathCapacity) return file;
  path.resize(length);
  return path;
}

bool FileExists(const std::wstring& file) {
  return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::wstring ModuleBesideHost() {
  std::wstring path(kPathCapacity, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), kPathCapacity));
  path.resize(path.rfind(L'\\') + 1);
  return path + kModuleFile;
}

}  // namespace brantel::host
