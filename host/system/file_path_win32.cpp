#include "host/system/file_path_win32.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <type_traits>

#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "system/windows/handle_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// Such as "C:\\".
constexpr std::size_t kRootLength = 3;

constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Bytes that are read at a time.
constexpr std::size_t kPiece = std::size_t{64} * 1024;

struct FileIdentity {
  DWORD volume;
  DWORD high;
  DWORD low;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

std::optional<FileIdentity> IdentityOf(const std::wstring& file) {
  const Handle handle(
      CreateFileW(file.c_str(), 0, kSharedWithAll, nullptr, OPEN_EXISTING, 0, nullptr));
  BY_HANDLE_FILE_INFORMATION information{};
  if (!handle || GetFileInformationByHandle(handle.get(), &information) == FALSE)
    return std::nullopt;
  return FileIdentity{information.dwVolumeSerialNumber, information.nFileIndexHigh,
                      information.nFileIndexLow};
}

struct SearchCloser {
  void operator()(HANDLE search) const { FindClose(search); }
};
using Search = std::unique_ptr<std::remove_pointer_t<HANDLE>, SearchCloser>;

Search SearchDirectory(const std::wstring& directory, WIN32_FIND_DATAW& found) {
  HANDLE search = FindFirstFileW((directory + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    throw CommandFailure(ExitCode::kFailed, "the directory " + ToUtf8(directory) +
                                                " cannot be read: " + SystemErrorText(error));
  }
  return Search(search);
}

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

bool IsDirectory(const std::wstring& file) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsSameFile(const std::wstring& one, const std::wstring& other) {
  const auto first = IdentityOf(one);
  const auto second = IdentityOf(other);
  if (first && second) return *first == *second;
  return lstrcmpiW(one.c_str(), other.c_str()) == 0;
}

std::string FileStart(const std::wstring& file, std::size_t size) {
  const Handle handle(
      CreateFileW(file.c_str(), GENERIC_READ, kSharedWithAll, nullptr, OPEN_EXISTING, 0, nullptr));
  std::string bytes;
  while (handle && bytes.size() < size) {
    // No more room than the file needs: what reads a plan again and again would allow for the
    // largest one each time.
    const std::size_t begin = bytes.size();
    bytes.resize(std::min(size, begin + kPiece));
    DWORD read = 0;
    if (ReadFile(handle.get(), &bytes[begin], static_cast<DWORD>(bytes.size() - begin), &read,
                 nullptr) == FALSE) {
      return "";
    }
    bytes.resize(begin + read);
    if (read == 0) break;
  }
  return bytes;
}

std::wstring ExistingDirectory(const std::wstring& directory) {
  std::wstring path = FullPath(directory);
  if (!IsDirectory(path)) {
    throw CommandFailure(ExitCode::kFailed, "there is no directory " + ToUtf8(path));
  }
  if (path.size() > kRootLength && path.back() == L'\\') path.pop_back();
  return path;
}

std::vector<std::wstring> FilesIn(const std::wstring& directory) {
  std::vector<std::wstring> names;
  WIN32_FIND_DATAW found{};
  const Search search = SearchDirectory(directory, found);
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
      names.emplace_back(found.cFileName);
  } while (FindNextFileW(search.get(), &found) != FALSE);
  return names;
}

}  // namespace brantel::host
