#include "framework/instance_files_win32.h"

#include <windows.h>

#include <array>

#include "framework/handle_win32.h"

namespace brantel {
namespace {

// Larger than any file of the limited reader, so that such a file takes a single read.
constexpr DWORD kReadSize = 16384;

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

}  // namespace brantel
