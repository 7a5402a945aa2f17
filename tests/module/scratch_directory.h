#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace brantel {

// A new, empty folder that is removed with all it holds. Its path has no blanks.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory();

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  // Writes a file with these bytes and returns its full path.
  [[nodiscard]] std::filesystem::path Write(const std::filesystem::path& name,
                                            std::string_view bytes) const;

  // The bytes of all files in the folder by their names.
  [[nodiscard]] std::map<std::wstring, std::string> Files() const;

 private:
  std::filesystem::path path_;
};

}  // namespace brantel
