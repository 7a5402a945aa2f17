#include "tests/module/scratch_directory.h"

#include <windows.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace brantel {
namespace {

std::filesystem::path TemporaryFolderWithoutBlanks() {
  const std::wstring folder = std::filesystem::temp_directory_path().wstring();
  if (folder.find(L' ') == std::wstring::npos) return folder;
  std::wstring short_name(MAX_PATH, L'\0');
  short_name.resize(GetShortPathNameW(folder.c_str(), short_name.data(), MAX_PATH));
  return short_name;
}

std::filesystem::path NewFolder() {
  static int count = 0;
  const std::wstring name =
      L"brantel_" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++count);
  const std::filesystem::path folder = TemporaryFolderWithoutBlanks() / name;
  if (!std::filesystem::create_directory(folder)) throw std::runtime_error("left from another run");
  return folder;
}

}  // namespace

ScratchDirectory::ScratchDirectory() : path_(NewFolder()) {}

ScratchDirectory::~ScratchDirectory() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
  EXPECT_FALSE(error) << path_ << " stays: " << error.message();
}

std::filesystem::path ScratchDirectory::Write(const std::filesystem::path& name,
                                              std::string_view bytes) const {
  std::filesystem::path file = path_ / name;
  std::ofstream out(file, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw std::runtime_error("a file cannot be written");
  return file;
}

std::map<std::wstring, std::string> ScratchDirectory::Files() const {
  std::map<std::wstring, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) {
    std::ifstream in(entry.path(), std::ios::binary);
    files[entry.path().filename().wstring()].assign(std::istreambuf_iterator<char>(in), {});
  }
  return files;
}

}  // namespace brantel
