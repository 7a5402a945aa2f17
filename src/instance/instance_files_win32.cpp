#include "instance/instance_files_win32.h"

#include <windows.h>

#include <new>
#include <span>
#include <utility>

#include "instance/instance_name.h"
#include "system/windows/ansi_text_win32.h"
#include "system/windows/handle_win32.h"

namespace brantel {
namespace {

class DiskFile final : public ByteSource {
 public:
  explicit DiskFile(Handle file) : file_(std::move(file)) {}

  std::size_t Read(std::span<char> buffer) override {
    DWORD count = 0;
    if (ReadFile(file_.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) ==
        FALSE) {
      throw ReadFailure(GetLastError());
    }
    return count;
  }

 private:
  Handle file_;
};

// Looked for in the wide text: in ANSI the second byte of a double-byte character may be what a
// backslash is.
std::wstring_view LastComponent(std::wstring_view path) {
  return path.substr(path.rfind(L'\\') + 1);
}

// Nothing when the directory lists no file for the path.
std::optional<std::wstring> ListedName(const std::wstring& path) {
  WIN32_FIND_DATAW entry;
  HANDLE const search = FindFirstFileW(path.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return std::nullopt;
  FindClose(search);
  return entry.cFileName;
}

// Whether the directory lists the file with the letters that the path has, as far as it tells.
bool HasItsLetters(const std::string& path) {
  const std::wstring wide = FromAnsi(path);
  const auto listed = ListedName(wide);
  return !listed || *listed == LastComponent(wide);
}

// Not every file system gives a file its own name in other letters: some take that for no change.
// False when the file has kept its name.
bool MoveByAnotherName(const std::string& path, const std::string& new_path) {
  const std::string other_path = new_path + "~";
  if (MoveFileA(path.c_str(), other_path.c_str()) == FALSE) return false;
  if (MoveFileA(other_path.c_str(), new_path.c_str()) != FALSE) return true;
  MoveFileA(other_path.c_str(), path.c_str());
  return false;
}

bool WriteContent(const std::string& path, DWORD disposition, std::string_view content) {
  const Handle file(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, disposition,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  DWORD written = 0;
  WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  return true;
}

}  // namespace

std::unique_ptr<ByteSource> DiskInstanceFiles::Open(const std::string& path) {
  Handle file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return nullptr;
  return std::make_unique<DiskFile>(std::move(file));
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

bool DiskInstanceFiles::Rename(const std::string& old_path, const std::string& new_path) {
  if (MoveFileA(old_path.c_str(), new_path.c_str()) == FALSE) return false;
  try {
    return HasItsLetters(new_path) || MoveByAnotherName(old_path, new_path);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool DiskInstanceFiles::Exists(const std::string& path) const {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::string> DiskInstanceFiles::StoredName(const std::string& path) const {
  const std::wstring wide = FromAnsi(path);
  const std::string own_name = ToAnsi(LastComponent(wide));
  const auto listed = ListedName(wide);
  if (!listed) {
    // A file stands also in a directory that does not let itself be listed.
    return Exists(path) ? std::optional(own_name) : std::nullopt;
  }
  const std::string stored = ToAnsi(*listed);
  // A name of characters that the code page lacks is known here by the short one that led to it.
  return FromAnsi(stored) == *listed ? stored : own_name;
}

bool DiskInstanceFiles::IsValidName(const std::string& name) const {
  const std::wstring wide = FromAnsi(name);
  return IsValidInstanceName(std::u16string(wide.begin(), wide.end()));
}

}  // namespace brantel
