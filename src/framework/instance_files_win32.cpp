#include "framework/instance_files_win32.h"

#include <windows.h>

#include <array>

#include "framework/ansi_text_win32.h"
#include "framework/handle_win32.h"
#include "framework/instance_name.h"

namespace brantel {
namespace {

// Larger than any file of the limited reader, so that such a file takes a single read.
constexpr DWORD kReadSize = 16384;

bool WriteContent(const std::string& path, DWORD disposition, std::string_view content) {
  const Handle file(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, disposition,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  DWORD written = 0;
  WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  return true;
}

}  // namespace

std::optional<std::string> DiskInstanceFiles::Read(const std::string& path) {
  const Handle file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return std::nullopt;

  std::string content;
  std::array<char, kReadSize> buffer;  // NOLINT(*-member-init): filled by ReadFile
  DWORD count = 0;
  do {
    if (ReadFile(file.get(), buffer.data(), kReadSize, &count, nullptr) == FALSE) {
      return std::nullopt;
    }
    content.append(buffer.data(), count);
  } while (count == kReadSize);
  return content;
}

bool DiskInstanceFiles::Write(const std::string& path, std::string_view content) {
  return WriteContent(path, CREATE_ALWAYS, content);
}

bool DiskInstanceFiles::Overwrite(const std::string& path, std::string_view content) {
  return WriteContent(path, TRUNCATE_EXISTING, content);
}

bool DiskInstanceFiles::Delete(const std::string& path) {
  return DeleteFileA(path.c_str()) != FALSE;
}

bool DiskInstanceFiles::Exists(const std::string& path) const {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool DiskInstanceFiles::IsValidName(const std::string& name) const {
  return IsValidInstanceName(name, IsLeadByte);
}

bool DiskInstanceFiles::SameName(const std::string& one, const std::string& other) const {
  return CompareStringA(LOCALE_INVARIANT, NORM_IGNORECASE, one.data(), static_cast<int>(one.size()),
                        other.data(), static_cast<int>(other.size())) == CSTR_EQUAL;
}

}  // namespace brantel
