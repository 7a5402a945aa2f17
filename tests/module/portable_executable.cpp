#include "tests/module/portable_executable.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/module/own_bits.h"

namespace brantel {
namespace {

template <typename Structure>
Structure Read(const std::vector<char>& bytes, std::size_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(Structure)) {
    throw std::runtime_error("a structure lies outside the file");
  }
  Structure structure{};
  std::memcpy(&structure, bytes.data() + offset, sizeof structure);
  return structure;
}

std::vector<char> ReadFileBytes(const std::wstring& file) {
  std::ifstream in(std::filesystem::path(file), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace

PortableExecutable::PortableExecutable(const std::wstring& file) : bytes_(ReadFileBytes(file)) {
  const auto start = static_cast<std::size_t>(Read<IMAGE_DOS_HEADER>(bytes_, 0).e_lfanew);
  headers_ = Read<IMAGE_NT_HEADERS>(bytes_, start);
  constexpr WORD kOwnMachine = kIs64Bit ? IMAGE_FILE_MACHINE_AMD64 : IMAGE_FILE_MACHINE_I386;
  if (headers_.Signature != IMAGE_NT_SIGNATURE || headers_.FileHeader.Machine != kOwnMachine) {
    throw std::runtime_error("not a program file of as many bits as this one");
  }
  const std::size_t table =
      start + offsetof(IMAGE_NT_HEADERS, OptionalHeader) + headers_.FileHeader.SizeOfOptionalHeader;
  for (std::size_t i = 0; i < headers_.FileHeader.NumberOfSections; ++i) {
    sections_.push_back(
        Read<IMAGE_SECTION_HEADER>(bytes_, table + i * sizeof(IMAGE_SECTION_HEADER)));
  }
}

bool PortableExecutable::is_library() const {
  return (headers_.FileHeader.Characteristics & IMAGE_FILE_DLL) != 0;
}

std::vector<std::string> PortableExecutable::ExportNames() const {
  const auto& place = headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const auto exports = At<IMAGE_EXPORT_DIRECTORY>(place.VirtualAddress);
  std::vector<std::string> names;
  for (DWORD i = 0; i < exports.NumberOfNames; ++i) {
    names.push_back(TextAt(At<DWORD>(exports.AddressOfNames + i * DWORD{sizeof(DWORD)})));
  }
  std::ranges::sort(names);
  return names;
}

std::size_t PortableExecutable::ExportCount() const {
  const auto& place = headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  return At<IMAGE_EXPORT_DIRECTORY>(place.VirtualAddress).NumberOfFunctions;
}

std::vector<std::string> PortableExecutable::ImportedLibraries() const {
  const auto& place = headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  std::vector<std::string> libraries;
  for (DWORD address = place.VirtualAddress;; address += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
    const auto import = At<IMAGE_IMPORT_DESCRIPTOR>(address);
    if (import.Name == 0) return libraries;
    std::string name = TextAt(import.Name);
    std::ranges::transform(name, name.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    libraries.push_back(std::move(name));
  }
}

template <typename Structure>
Structure PortableExecutable::At(DWORD address) const {
  return Read<Structure>(bytes_, OffsetOf(address));
}

std::string PortableExecutable::TextAt(DWORD address) const {
  const auto start = bytes_.begin() + static_cast<std::ptrdiff_t>(OffsetOf(address));
  return {start, std::find(start, bytes_.end(), '\0')};
}

std::size_t PortableExecutable::OffsetOf(DWORD address) const {
  for (const IMAGE_SECTION_HEADER& section : sections_) {
    if (address >= section.VirtualAddress &&
        address - section.VirtualAddress < section.SizeOfRawData) {
      return section.PointerToRawData + (address - section.VirtualAddress);
    }
  }
  throw std::runtime_error("an address lies outside the file");
}

}  // namespace brantel
