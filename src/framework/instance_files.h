#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brantel {

// The file system that holds the instances. Paths are ANSI text in the system's code page. Nothing
// is tried twice: a file that somebody else holds counts as one that cannot be had.
class InstanceFiles {
 public:
  virtual ~InstanceFiles() = default;

  // The whole content of an existing file, or nothing when it cannot be opened or read. Other
  // readers are let in meanwhile; a file that someone writes cannot be opened.
  virtual std::optional<std::string> Read(const std::string& path) = 0;

  // Creates the file or replaces what it holds, letting nobody else in. False when it cannot be
  // opened, for example while somebody reads it; it then stays as it was. What happens to the bytes
  // after that is not reported.
  virtual bool Write(const std::string& path, std::string_view content) = 0;

  // The same for a file that has to exist.
  virtual bool Overwrite(const std::string& path, std::string_view content) = 0;

  virtual bool Delete(const std::string& path) = 0;

  [[nodiscard]] virtual bool Exists(const std::string& path) const = 0;

  // Whether a file can have this name and stays in its directory (framework/instance_name.h).
  [[nodiscard]] virtual bool IsValidName(const std::string& name) const = 0;

  // Whether both names mean the same file in one directory.
  [[nodiscard]] virtual bool SameName(const std::string& one, const std::string& other) const = 0;
};

}  // namespace brantel
