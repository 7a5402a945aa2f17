#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "instance/byte_source.h"

namespace brantel {

// The file system that holds the instances. Paths are ANSI text in the system's code page. Nothing
// is tried twice: a file that somebody else holds counts as one that cannot be had. Writing,
// deleting and renaming need no memory of the program's own.
class InstanceFiles {
 public:
  virtual ~InstanceFiles() = default;

  // Opens an existing file for reading, until the object is gone. Null when it cannot be opened.
  // Other readers are let in meanwhile; a file that someone writes cannot be opened.
  virtual std::unique_ptr<ByteSource> Open(const std::string& path) = 0;

  // Creates the file or replaces what it holds, letting nobody else in. False when it cannot be
  // opened, for example while somebody reads it; it then stays as it was. What happens to the bytes
  // after that is not reported.
  virtual bool Write(const std::string& path, std::string_view content) = 0;

  // The same for a file that has to exist.
  virtual bool Overwrite(const std::string& path, std::string_view content) = 0;

  virtual bool Delete(const std::string& path) = 0;

  // Gives a file another name, which may also be its own in other letters. False when another file
  // has the name, or when that cannot be done now.
  virtual bool Rename(const std::string& old_path, const std::string& new_path) = 0;

  [[nodiscard]] virtual bool Exists(const std::string& path) const = 0;

  // The name that the file to which this path leads has in its directory. It may be another than
  // the path's: the file system tells names apart by rules of its own and may know a file by a
  // short name, too. So two names mean one file exactly when the files have one stored name.
  // Nothing when the path leads to no file.
  [[nodiscard]] virtual std::optional<std::string> StoredName(const std::string& path) const = 0;

  // Whether a file can have this name and stays in its directory (instance/instance_name.h).
  [[nodiscard]] virtual bool IsValidName(const std::string& name) const = 0;
};

}  // namespace brantel
