#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace brantel {

// What the headers of a program file of as many bits as this one say, read from its bytes and not
// from a loaded copy.
class PortableExecutable {
 public:
  // Throws std::runtime_error for a file that is no such program or library.
  explicit PortableExecutable(const std::wstring& file);

  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] bool is_library() const;

  // Names of the exports, as they stand in the file, ascending.
  [[nodiscard]] std::vector<std::string> ExportNames() const;
  // How many functions are exported, with or without a name.
  [[nodiscard]] std::size_t ExportCount() const;
  // Lower-case names of the libraries that are imported.
  [[nodiscard]] std::vector<std::string> ImportedLibraries() const;

 private:
  // The structure at a relative virtual address.
  template <typename Structure>
  [[nodiscard]] Structure At(DWORD address) const;
  [[nodiscard]] std::string TextAt(DWORD address) const;
  [[nodiscard]] std::size_t OffsetOf(DWORD address) const;

  std::vector<char> bytes_;
  IMAGE_NT_HEADERS headers_{};
  std::vector<IMAGE_SECTION_HEADER> sections_;
};

}  // namespace brantel
