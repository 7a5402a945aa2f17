#include "host/system/rotated_file_win32.h"

#include <windows.h>

#include "host/outcome/system_error_text_win32.h"
#include "system/windows/handle_win32.h"

namespace brantel::host {
namespace {

constexpr LONGLONG kFullBytes = LONGLONG{1024} * 1024;
constexpr int kOldest = 4;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

constexpr DWORD kPollMilliseconds = 10;
constexpr int kLockPolls = 200;
constexpr int kDeletionPolls = 10;

Handle Open(const std::wstring& path, DWORD access, DWORD disposition) {
  return Handle(CreateFileW(path.c_str(), access, kShareAll, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
}

LONGLONG SizeOf(const Handle& file) {
  LARGE_INTEGER size{};
  return file && GetFileSizeEx(file.get(), &size) != FALSE ? size.QuadPart : 0;
}

std::string ReadAll(const std::wstring& path) {
  const Handle file = Open(path, GENERIC_READ, OPEN_EXISTING);
  std::string content(static_cast<std::size_t>(SizeOf(file)), '\0');
  DWORD read = 0;
  if (file)
    ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
  content.resize(read);
  return content;
}

// Whether the last line has been cut off, as by a kill or a full disk.
bool EndsWithinLine(const Handle& file) {
  if (SizeOf(file) == 0) return false;
  char last = '\0';
  DWORD read = 0;
  return SetFilePointer(file.get(), -1, nullptr, FILE_END) != INVALID_SET_FILE_POINTER &&
         ReadFile(file.get(), &last, 1, &read, nullptr) != FALSE && read == 1 && last != '\n';
}

}  // namespace

// Keeps other hosts from the file. Whoever is killed frees it, since the system then deletes the
// file. One that does not come free is done without: a line is written in one piece, and an alert
// must not wait.
class RotatedFile::Lock {
 public:
  explicit Lock(const std::wstring& file) {
    const std::wstring path = file + L".lock";
    for (int poll = 0; poll < kLockPolls; ++poll) {
      file_ = Handle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
      if (file_ || !MayComeFree(GetLastError(), poll)) return;
      Sleep(kPollMilliseconds);
    }
  }

  [[nodiscard]] bool is_held() const { return static_cast<bool>(file_); }

 private:
  static bool MayComeFree(DWORD error, int poll) {
    if (error == ERROR_SHARING_VIOLATION) return true;
    // So says the system while it deletes the file, and where nothing may be written at all.
    return error == ERROR_ACCESS_DENIED && poll < kDeletionPolls;
  }

  Handle file_;
};

std::wstring RotatedFile::OlderPath(int age) const {
  return age == 0 ? path_ : path_ + L"." + std::to_wstring(age);
}

void RotatedFile::RotateIfFull() const {
  if (SizeOf(Open(path_, GENERIC_READ, OPEN_EXISTING)) < kFullBytes) return;
  for (int age = kOldest; age > 0; --age)
    MoveFileExW(OlderPath(age - 1).c_str(), OlderPath(age).c_str(), MOVEFILE_REPLACE_EXISTING);
}

std::optional<std::string> RotatedFile::Append(std::string_view line) const {
  const Lock lock(path_);
  if (lock.is_held()) RotateIfFull();
  const Handle file = Open(path_, FILE_APPEND_DATA | FILE_READ_DATA, OPEN_ALWAYS);
  if (!file) return SystemErrorText(GetLastError());
  const std::string bytes = (EndsWithinLine(file) ? "\n" : "") + std::string(line);
  DWORD written = 0;
  if (WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ==
      FALSE)
    return SystemErrorText(GetLastError());
  if (written != bytes.size()) return SystemErrorText(ERROR_DISK_FULL);
  if (durability_ == Durability::kComputer && FlushFileBuffers(file.get()) == FALSE)
    return SystemErrorText(GetLastError());
  return std::nullopt;
}

std::string RotatedFile::Read() const {
  const Lock lock(path_);
  std::string content;
  for (int age = kOldest; age >= 0; --age) {
    if (!content.empty() && content.back() != '\n') content += '\n';
    content += ReadAll(OlderPath(age));
  }
  return content;
}

}  // namespace brantel::host
